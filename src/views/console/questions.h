#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace quintara {

/// Asks for a line that isn't to be seen while it is typed, nor to be kept anywhere. Nothing at the end of
/// `in`.
std::optional<std::string> AskSecret(std::istream& in, std::ostream& out, const std::string& question);

/// Prints a numbered list under its title and asks for one of the numbers, until one is typed. Gives the index of
/// the line; nothing for an empty answer and at the end of `in`, which dismiss the list.
std::optional<std::size_t> AskChoice(std::istream& in, std::ostream& out, const std::string& title,
                                     const std::vector<std::string>& lines);

/// Waits until someone has read what was printed, and goes on: at Enter, or at the end of `in`.
void AwaitEnter(std::istream& in, std::ostream& out);

}  // namespace quintara
