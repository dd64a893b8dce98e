#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "access/session/texts.h"

namespace quintara::test {

/// Where a catalogue of a language stands below the folder of all languages.
std::string PathOfCatalogue(const std::string& language, Catalogue catalogue);

/// The keys that a catalogue's file has to hold, in order, each once.
std::vector<TextKey> KeysOf(Catalogue catalogue);

/// All that is wrong with the file of a catalogue, a sentence each that names the key: keys that are
/// missing, unknown, doubled or out of order; tokens that nothing stands for or that are left out;
/// tokens inside words; texts that are empty, too long for their place, or not as the language writes.
std::vector<std::string> FaultsOf(const std::string& language, Catalogue catalogue, std::string_view bytes);

}  // namespace quintara::test
