#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "hosts/vault/embedded_vault.h"

namespace quintara::hosts {

/// Answers what the hosts ask their user: through boxes, or as it was told to. What came up is kept until it is read.
class Questions {
 public:
  static constexpr std::int32_t kDismiss = -1;
  static constexpr std::int32_t kAskUser = -2;

  /// Where nobody is there to be asked, questions are dismissed.
  explicit Questions(bool isAttended) : isAttended_(isAttended) {}

  bool Ask(const std::string& warning);
  std::optional<std::size_t> Pick(const VaultDialog& dialog);

  void AnswerBoxes(std::int32_t answer) { boxAnswer_ = answer; }
  void AnswerDialogs(std::int32_t index) { dialogAnswer_ = index; }
  /// A line for each question since the last reading.
  std::string ReadShown();

 private:
  bool isAttended_;
  std::int32_t boxAnswer_ = kAskUser;
  std::int32_t dialogAnswer_ = kAskUser;
  std::string shown_;
};

}  // namespace quintara::hosts
