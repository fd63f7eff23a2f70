// XML names: what is accepted can be written and read back; what is refused is told.
#include <pugixml.hpp>

#include "fuzzing.h"
#include "host/error.h"
#include "one_file.h"
#include "platform/posix/iconv_encodings.h"
#include "structure/xml/xml_document.h"
#include "structure/xml/xml_names.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tessel;
  static const posix::IconvEncodings kEncodings;
  const std::string name(reinterpret_cast<const char*>(data), size);
  const bool good = !name.empty() && FindNameOffence(name).empty();
  XmlDocument document;
  bool made = false;
  try {
    const XmlNode element = document.AppendElement(document.Root(), name);
    document.SetAttribute(element, name, "value");
    made = true;
  } catch (const RuntimeError& error) {
    fuzz::Require(name.empty() || std::string(error.what()).find("-->") != std::string::npos,
                  "refused without the character");
  }
  fuzz::Require(made == good, "a name is accepted here and refused there");
  if (!made) return 0;
  fuzz::OneFile file;
  int replaced = 0;
  document.Save(file, kEncodings, "file.xml", replaced);
  pugi::xml_document again;
  fuzz::Require(
      again.load_buffer(file.bytes.data(), file.bytes.size(), pugi::parse_default, pugi::encoding_utf8),
      "a written document is not well-formed");
  fuzz::Require(again.document_element().name() == name, "another name came back");
  fuzz::Require(again.document_element().attribute(name.c_str()).value() == std::string("value"),
                "another attribute came back");
  fuzz::Require(replaced == 0, "a character of a name was replaced");
  return 0;
}
