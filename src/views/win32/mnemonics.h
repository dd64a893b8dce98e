#pragma once

#include <string>
#include <vector>

namespace quintara::win32 {

/// A caption as the toolkit takes it: what isn't a mnemonic is shown as it stands.
std::wstring Escaped(const std::wstring& caption);

/// The captions of one dialog as the toolkit takes them, each with a letter or digit to press it, as far as there are
/// any that no other one has: first letters of words go before others. A caption of a single sign has that sign.
std::vector<std::wstring> WithMnemonics(const std::vector<std::wstring>& captions);

}  // namespace quintara::win32
