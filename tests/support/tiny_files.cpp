#include "support/tiny_files.h"

#include <cstddef>
#include <cstdint>

namespace quintara::test {
namespace {

std::string LittleEndian(std::size_t number) {
  std::string bytes;
  for (int i = 0; i < 4; ++i) bytes += static_cast<char>(number >> (8 * i) & 0xFFU);
  return bytes;
}

std::string Quoted(const std::string& text, char quote, char escape) {
  std::string quoted;
  for (const char character : text) {
    if (character == quote || character == '\\') quoted += character == '\\' ? '\\' : escape;
    quoted += character;
  }
  return quote + quoted + quote;
}

}  // namespace

std::string TinyStep(const std::string& partNumber, const std::string& note) {
  return "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((" + Quoted(note, '\'', '\'') +
         "),'2;1');\nENDSEC;\nDATA;\n#1=PRODUCT('id'," + Quoted(partNumber, '\'', '\'') +
         ",'',(#2));\nENDSEC;\nEND-ISO-10303-21;\n";
}

std::string TinyLight(const std::string& partNumber, const std::string& note) {
  return LightWithJson("{\"asset\":{\"extras\":{\"PartNumber\":" + Quoted(partNumber, '"', '\\') +
                       "},\"generator\":" + Quoted(note, '"', '\\') + ",\"version\":\"2.0\"}}");
}

std::string LightWithJson(std::string json) {
  while (json.size() % 4 != 0) json += ' ';
  return "glTF" + LittleEndian(2) + LittleEndian(20 + json.size()) + LittleEndian(json.size()) + "JSON" + json;
}

}  // namespace quintara::test
