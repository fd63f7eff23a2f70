// Texts and encodings: what was put into a document comes back as it was, in every encoding; what XML does
// not allow is counted, and the file is well-formed all the same.
#include <pugixml.hpp>

#include "fuzzing.h"
#include "one_file.h"
#include "platform/posix/iconv_encodings.h"
#include "structure/xml/xml_document.h"

namespace {

using namespace tessel;

constexpr const char* kEncodingNames[] = {"UTF-8",      "iso-8859-1",   "windows-1252", "UTF-16",
                                          "us-ascii",   "windows-1251", "GB18030",      "Shift_JIS",
                                          "iso-8859-7", "EUC-JP"};

pugi::xml_document ReadBack(const std::string& bytes, const TextEncoding& encoding) {
  const std::string utf8 = encoding.Decode(bytes);
  pugi::xml_document document;
  constexpr unsigned kExactly = (pugi::parse_default | pugi::parse_ws_pcdata | pugi::parse_declaration);
  fuzz::Require(document.load_buffer(utf8.data(), utf8.size(), kExactly, pugi::encoding_utf8),
                "a written document is not well-formed");
  return document;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const posix::IconvEncodings kEncodings;
  fuzz::Input input(data, size);
  const std::string name = kEncodingNames[input.Choice(std::size(kEncodingNames))];
  const auto encoding = kEncodings.Open(name);
  const std::string text = input.Part();
  const std::string content = input.Rest();
  (void)encoding->Decode(content);
  (void)encoding->Encode(content);

  XmlDocument document;
  document.InsertProcessingInstruction("xml", "version=\"1.0\" encoding=\"" + name + "\"");
  const XmlNode top = document.AppendElement(document.Root(), "top");
  document.SetAttribute(top, "a", text);
  const XmlNode first = document.AppendElement(top, "text");
  document.SetText(first, text);
  document.AppendCData(document.AppendElement(top, "cdata"), content);
  fuzz::OneFile file;
  int replaced = 0;
  document.Save(file, kEncodings, "file.xml", replaced);

  const pugi::xml_document again = ReadBack(file.bytes, *encoding);
  const pugi::xml_node read = again.document_element();
  if (replaced != 0 || (text + content).find('\0') != std::string::npos) return 0;
  fuzz::Require(read.attribute("a").value() == text, "an attribute came back as something else");
  fuzz::Require(read.child("text").text().get() == text, "a text came back as something else");
  std::string sections;
  for (const pugi::xml_node& piece : read.child("cdata"))
    sections += piece.value();
  fuzz::Require(sections == content, "a CDATA section came back as something else");
  return 0;
}
