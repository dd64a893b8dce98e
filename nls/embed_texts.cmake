# cmake -DFILES=... -DOUTPUT=... -P embed_texts.cmake: writes a source that holds the bytes of the files,
# which are named by their paths below the current folder.
set(entries "")
foreach(path IN LISTS FILES)
  file(READ "${path}" bytes HEX)
  string(LENGTH "${bytes}" size)
  math(EXPR size "${size} / 2")
  string(REGEX REPLACE "(..)" "\\\\x\\1" bytes "${bytes}")
  string(APPEND entries "    {\"${path}\", {\"${bytes}\", ${size}}},\n")
endforeach()

file(WRITE "${OUTPUT}" "#include \"nls/embedded_texts.h\"

namespace quintara {
namespace {

constexpr TextFile kFiles[] = {
${entries}};

}  // namespace

std::span<const TextFile> EmbeddedTexts() { return kFiles; }

}  // namespace quintara
")
