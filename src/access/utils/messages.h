#pragma once

#include <cstddef>
#include <exception>
#include <utility>

#include "access/contracts/platform.h"
#include "access/session/process.h"
#include "access/utils/Cls_Utils.h"
#include "base/attempt.h"

namespace quintara {

/// Shows a text of the catalogue, which takes as many values as its callers have to give. The global
/// is filled in place; see `Cls_Utils::ShowMessage`.
template <std::size_t Parameters, class... Values>
Variant Show(CatalogueText<Parameters>& text, int style, const Values&... values) {
  static_assert(sizeof...(Values) == Parameters, "the table of keys tells what this text takes");
  return Utils().ShowMessage(text.text, style, {Variant(values)...});
}

/// The same text as a value, its global left alone; see `Cls_Utils::GetMessage`.
template <std::size_t Parameters, class... Values>
std::string Filled(const CatalogueText<Parameters>& text, const Values&... values) {
  static_assert(sizeof...(Values) == Parameters, "the table of keys tells what this text takes");
  return Utils().GetMessage(text.text, {Variant(values)...});
}

/// Gives what `body` gives; on a failure calls `report` with its state, and `neutral` is the result. A
/// failure of `report` itself goes to the caller.
template <class Result, class Report, class Body>
Result OrReport(Result neutral, Report&& report, Body&& body) {
  ErrorState failure;
  try {
    return std::forward<Body>(body)();
  } catch (const std::exception& error) {
    failure = StateOf(error);
  }
  std::forward<Report>(report)(failure);
  return neutral;
}

/// The same with the standard report, `COMMON.UNEXPECTED_ERROR` with the label and the failure's
/// description.
template <class Result, class Body>
Result Reported(const char* label, int style, Result neutral, Body&& body) {
  const auto report = [&](const ErrorState& failure) {
    Show(Process().texts.COMMON_UNEXPECTED_ERROR, style, label, failure.description);
  };
  return OrReport(std::move(neutral), report, std::forward<Body>(body));
}

}  // namespace quintara
