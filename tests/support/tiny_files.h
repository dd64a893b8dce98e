#pragma once

#include <string>

namespace quintara::test {

/// The smallest file of the CAD host that holds a part number: a STEP part without geometry, and
/// a binary glTF file without meshes. `note` makes the content another one.
std::string TinyStep(const std::string& partNumber, const std::string& note = {});
std::string TinyLight(const std::string& partNumber, const std::string& note = {});

/// A binary glTF file whose JSON is `json`, whatever that is.
std::string LightWithJson(std::string json);

}  // namespace quintara::test
