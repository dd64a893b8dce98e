#include "hosts/workbook/xml_values.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <optional>
#include <ranges>
#include <utility>

#include "base/failure.h"
#include "base/numbers.h"

namespace quintara::workbook::xml {
namespace {

namespace chrono = std::chrono;
using namespace std::string_view_literals;

constexpr double kSecondsOfDay = 86'400;

[[noreturn]] void ThrowNo(const char* what, std::string_view text) {
  throw Failure(failure::kRefused, "\"" + std::string(text) + "\" is no " + what);
}

// Formatted texts come in pieces.
void AppendText(XmlNode node, std::string& text) {
  for (const auto child : node.children()) {
    const bool isText = child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata;
    if (isText) text += child.value();
    AppendText(child, text);
  }
}

bool TakeNumber(std::string_view& rest, std::size_t digits, char before, int& number) {
  if (before != 0) {
    if (!rest.starts_with(before)) return false;
    rest.remove_prefix(1);
  }
  const auto length = std::min(digits, rest.size());
  const auto [end, error] = std::from_chars(rest.data(), rest.data() + length, number);
  if (error != std::errc() || end != rest.data() + digits || number < 0) return false;
  rest.remove_prefix(digits);
  return true;
}

std::optional<double> SecondsOf(std::string_view time) {
  if (time.empty()) return 0;
  int hours = 0;
  int minutes = 0;
  if (!TakeNumber(time, 2, 'T', hours) || !TakeNumber(time, 2, ':', minutes) || !time.starts_with(':')) return {};
  const auto seconds = TryToDouble(time.substr(1));
  if (!seconds || hours > 23 || minutes > 59 || *seconds < 0 || *seconds >= 60) return {};
  return hours * 3600 + minutes * 60 + *seconds;
}

// Day 1 is the first of January 1900, and 1900 counts as a leap year, so that days from March on are one more. The
// day before that first one but one serves for mere times in some files, as the day before it does in others.
double DayNumber(chrono::sys_days day) {
  using namespace std::chrono_literals;
  constexpr auto kZero = chrono::sys_days(1899y / chrono::December / 30);
  constexpr auto kLeap = chrono::sys_days(1900y / chrono::March / 1);
  const auto days = (day - kZero).count();
  return static_cast<double>(day > kZero && day < kLeap ? days - 1 : days);
}

double SerialOf(std::string_view text) {
  auto rest = text;
  int year = 0;
  int month = 0;
  int day = 0;
  if (!TakeNumber(rest, 4, 0, year) || !TakeNumber(rest, 2, '-', month) || !TakeNumber(rest, 2, '-', day)) {
    ThrowNo("date", text);
  }
  const chrono::year_month_day date{chrono::year(year), chrono::month(static_cast<unsigned>(month)),
                                    chrono::day(static_cast<unsigned>(day))};
  const auto seconds = SecondsOf(rest);
  if (!date.ok() || !seconds) ThrowNo("date", text);
  return DayNumber(chrono::sys_days(date)) + *seconds / kSecondsOfDay;
}

double NumberOf(std::string_view text) {
  const auto number = TryToDouble(text);
  if (!number) ThrowNo("number", text);
  return *number;
}

bool BooleanOf(std::string_view text) {
  if (text != "0" && text != "1") ThrowNo("Boolean", text);
  return text == "1";
}

void WriteData(XmlNode element, const char* type, const char* text) {
  auto data = element.append_child("Data");
  data.append_attribute("ss:Type") = type;
  data.append_child(pugi::node_pcdata).set_value(text);
}

}  // namespace

XmlAttribute AttributeOf(XmlNode node, std::string_view name) {
  for (const auto attribute : node.attributes()) {
    if (BaseName(attribute.name()) == name) return attribute;
  }
  return {};
}

XmlNode ChildOf(XmlNode node, std::string_view name) {
  return node.find_child([&](XmlNode child) { return BaseName(child.name()) == name; });
}

Cell ReadValue(XmlNode data) {
  const std::string_view type = AttributeOf(data, "Type").value();
  std::string text;
  AppendText(data, text);
  Cell cell;
  if (type == "String") {
    cell.value = std::move(text);
  } else if (type == "Number") {
    cell.value = NumberOf(text);
  } else if (type == "Boolean") {
    cell.value = BooleanOf(text);
  } else if (type == "DateTime") {
    cell.value = SerialOf(text);
  } else if (type == "Error") {
    cell.value = std::move(text);
    cell.isError = true;
  } else {
    ThrowNo("type of a value", type);
  }
  return cell;
}

bool IsError(std::string_view text) {
  static constexpr std::array kErrors = {"#DIV/0!"sv, "#N/A"sv,  "#NAME?"sv, "#NULL!"sv,
                                         "#NUM!"sv,   "#REF!"sv, "#VALUE!"sv};
  return std::ranges::find(kErrors, text) != kErrors.end();
}

// A Boolean is a formula too: there are readers that lose it otherwise.
void WriteValue(XmlNode element, const Cell& cell) {
  if (cell.isError) {
    WriteData(element, "Error", cell.value.IsEmpty() ? "#N/A" : cell.value.ToText().c_str());
  } else if (cell.value.IsBoolean()) {
    const bool isTrue = cell.value.ToBoolean();
    element.append_attribute("ss:Formula") = isTrue ? "=TRUE()" : "=FALSE()";
    WriteData(element, "Boolean", isTrue ? "1" : "0");
  } else if (cell.value.IsText()) {
    WriteData(element, "String", cell.value.ToText().c_str());
  } else {
    WriteData(element, "Number", NumberText(cell.value.ToDouble()).c_str());
  }
}

std::string FormatNamed(std::string_view name) {
  using Named = std::pair<std::string_view, const char*>;
  static constexpr std::array kNames = {
      Named("", kGeneralFormat),
      Named("General Number", kGeneralFormat),
      Named("Fixed", "0.00"),
      Named("Standard", "#,##0.00"),
      Named("Percent", "0.00%"),
      Named("Scientific", "0.00E+00"),
      Named("Short Date", "m/d/yyyy"),
      Named("Medium Date", "d-mmm-yy"),
      Named("Short Time", "h:mm"),
      Named("Long Time", "h:mm:ss AM/PM"),
      Named("Medium Time", "h:mm AM/PM"),
      Named("General Date", "m/d/yyyy h:mm"),
  };
  const auto* const found = std::ranges::find(kNames, name, &Named::first);
  return found == kNames.end() ? std::string(name) : found->second;
}

}  // namespace quintara::workbook::xml
