#pragma once

#include <soci/soci.h>

#include <string>

namespace quintara::vault {

/// What the database said, without the line break that it may end with.
inline std::string MessageOf(const soci::soci_error& error) {
  std::string message = error.get_error_message();
  while (!message.empty() && (message.back() == '\n' || message.back() == ' ')) message.pop_back();
  return message;
}

}  // namespace quintara::vault
