// The writer, the names and the index of the document.
#include "structure/xml/xml_document.h"

#include <gtest/gtest.h>

#include <pugixml.hpp>
#include <random>

#include "host/error.h"
#include "structure/xml/xml.h"
#include "structure/xml/xml_names.h"
#include "support/machine.h"

namespace tessel {
namespace {

class XmlDocumentTest : public testing::Test, public test::Machine {
 protected:
  // The bytes of the saved document.
  std::string Saved(const XmlDocument& document) {
    replaced = 0;
    document.Save(platform.files, platform.encodings, folder.Path("out.xml"), replaced);
    return folder.Read("out.xml");
  }
  // What is written inside <a> for a value in an encoding.
  std::string Written(const std::string& encoding, const std::string& value, bool cdata) {
    XmlDocument document;
    XML::InstructGerman(document, "a", encoding);
    const XmlNode root = document.ElementsByTagName("a").front();
    cdata ? document.AppendCData(root, value) : document.SetText(root, value);
    const std::string bytes = Saved(document);
    const std::size_t start = bytes.find("<a>") + 3;
    return bytes.substr(start, bytes.size() - start - 4);
  }

  int replaced = 0;
};

TEST_F(XmlDocumentTest, WritesTheTreeAsItIs) {
  XmlDocument document;
  XML::InstructGerman(document, "root", "iso-8859-1");
  const XmlNode root = document.ElementsByTagName("root").front();
  document.SetAttribute(root, "when", "a\"<b>&'\t\r\n\xC3\xA4");
  const XmlNode child = document.AppendElement(root, "child");
  document.AppendCData(child, "");
  document.AppendElement(root, "empty");
  document.SetText(document.AppendElement(root, "text"), "1 < 2 & \"3\" ]]> 'x'");
  (void)document.NewElement("detached");

  EXPECT_EQ(Saved(document),
            "<?xml version=\"1.0\" encoding=\"iso-8859-1\"?>"
            "<root when=\"a&quot;&lt;b&gt;&amp;'&#9;&#13;&#10;\xE4\">"
            "<child><![CDATA[]]></child><empty/><text>1 &lt; 2 &amp; \"3\" ]]&gt; 'x'</text></root>");
  EXPECT_EQ(replaced, 0);
  EXPECT_EQ(folder.Tree(), (std::vector<std::string>{"drives/", "out.xml", "program/"}));
}

TEST_F(XmlDocumentTest, WritesEveryCharacterInEveryEncoding) {
  struct Case {
    const char* encoding;
    std::string value;
    std::string text;
    std::string cdata;
    int replacements = 0;
  };
  const Case cases[] = {
      {"iso-8859-1", "a\u20ACb", "a&#8364;b", "<![CDATA[a]]>&#8364;<![CDATA[b]]>"},
      {"iso-8859-1", "\u20AC\u20AC", "&#8364;&#8364;", "<![CDATA[]]>&#8364;&#8364;<![CDATA[]]>"},
      {"windows-1252", "a\u20ACb",
       "a\x80"
       "b",
       "<![CDATA[a\x80"
       "b]]>"},
      {"UTF-8", "\u20AC\U0001F600", "\u20AC\U0001F600", "<![CDATA[\u20AC\U0001F600]]>"},
      {"us-ascii", "\u00E4\U0001F600", "&#228;&#128512;", "<![CDATA[]]>&#228;&#128512;<![CDATA[]]>"},
      {"iso-8859-1", "a]]>b", "a]]&gt;b", "<![CDATA[a]]]]><![CDATA[>b]]>"},
      {"iso-8859-1", "]]]>", "]]]&gt;", "<![CDATA[]]]]]><![CDATA[>]]>"},
      {"iso-8859-1", "]]\u20AC>", "]]&#8364;&gt;", "<![CDATA[]]]]>&#8364;<![CDATA[>]]>"},
      {"iso-8859-1", "\u20AC]]>", "&#8364;]]&gt;", "<![CDATA[]]>&#8364;<![CDATA[]]]]><![CDATA[>]]>"},
      {"iso-8859-1", "a\r\n\tb", "a&#13;\n\tb", "<![CDATA[a]]>&#13;<![CDATA[\n\tb]]>"},
      // What XML does not allow: controls, NUL, noncharacters, malformed bytes, a lone surrogate.
      {"iso-8859-1",
       "a\x01\x1F"
       "b",
       "a??b", "<![CDATA[a??b]]>", 2},
      {"iso-8859-1", std::string("a\0b", 3), "a?b", "<![CDATA[a?b]]>", 1},
      {"UTF-8", "a\uFFFE\uFFFF", "a\uFFFD\uFFFD", "<![CDATA[a\uFFFD\uFFFD]]>", 2},
      {"UTF-8",
       "\xE4"
       "b\xED\xA0\x80",
       "\uFFFDb\uFFFD\uFFFD\uFFFD", "<![CDATA[\uFFFDb\uFFFD\uFFFD\uFFFD]]>", 4},
      // Allowed, however odd: DEL, C1 controls, other noncharacters, the replacement character itself.
      {"UTF-8", "\x7F\u0085\uFDD0\U0001FFFE", "\x7F\u0085\uFDD0\U0001FFFE",
       "<![CDATA[\x7F\u0085\uFDD0\U0001FFFE]]>"},
      // What some reader takes for something else.
      {"Shift_JIS", "\\\u00A5~\u203Ea", "&#92;&#165;&#126;&#8254;a",
       "<![CDATA[]]>&#92;&#165;&#126;&#8254;<![CDATA[a]]>"},
      {"iso-8859-1", "\uFFFD", "&#65533;", "<![CDATA[]]>&#65533;<![CDATA[]]>"},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(std::string(row.encoding) + " " + row.text);
    EXPECT_EQ(Written(row.encoding, row.value, false), row.text);
    EXPECT_EQ(replaced, row.replacements);
    EXPECT_EQ(Written(row.encoding, row.value, true), row.cdata);
    EXPECT_EQ(replaced, row.replacements);
  }
}

TEST_F(XmlDocumentTest, WritesUtf16WithAByteOrderMark) {
  XmlDocument document;
  XML::InstructGerman(document, "a", "UTF-16");
  document.AppendCData(document.ElementsByTagName("a").front(), "\u20AC]]>\U0001F600");
  const std::string bytes = Saved(document);
  ASSERT_EQ(bytes.substr(0, 4), std::string("\xFF\xFE<\0", 4));
  pugi::xml_document parsed;
  ASSERT_TRUE(parsed.load_file(folder.Path("out.xml").c_str()));
  std::string text;
  for (const auto& piece : parsed.child("a"))
    text += piece.value();
  EXPECT_EQ(text, "\u20AC]]>\U0001F600");
}

TEST_F(XmlDocumentTest, NamesThatTheEncodingLacksStayReadable) {
  XmlDocument document;
  XML::InstructGerman(document, "Stra\u00DFe", "iso-8859-1");
  document.SetAttribute(document.ElementsByTagName("Stra\u00DFe").front(), "\u03B1", "1");
  document.SetAttribute(document.ElementsByTagName("Stra\u00DFe").front(), "_x3b1_", "2");
  EXPECT_EQ(Saved(document),
            "<?xml version=\"1.0\" encoding=\"iso-8859-1\"?><Stra\xDF"
            "e _x3b1_=\"1\" _x5f_x3b1_=\"2\"/>");
  EXPECT_EQ(replaced, 2);
}

// Each of them would make a file that no reader accepts.
TEST_F(XmlDocumentTest, RefusesEncodingsThatCannotHoldXml) {
  const std::pair<const char*, const char*> cases[] = {
      {"850", "XML does not allow this name"},              // IBM850
      {"ISO_8859-5:1988", "XML does not allow this name"},  // ISO-8859-5
      {"DIN_66003", "it lacks the character ["},            // German ASCII
      {"IBM420", "it lacks the character ["},               // Arabic EBCDIC
      {"UTF-32", "a reader could not make out its declaration"},
      {"UTF-7", "a reader could not make out its declaration"},  // escapes what surrounds the name
      {"IBM1026", "a reader could not make out its declaration"},
  };
  for (const auto& [encoding, reason] : cases) {
    XmlDocument document;
    XML::InstructGerman(document, "a", encoding);
    try {
      (void)Saved(document);
      ADD_FAILURE() << encoding << " is accepted";
    } catch (const RuntimeError& error) {
      EXPECT_EQ(error.what(),
                std::string("Cannot write XML in the encoding \"") + encoding + "\": " + reason);
    }
    EXPECT_FALSE(folder.Exists("out.xml")) << encoding;
  }
  XmlDocument nameless;
  XML::InstructGerman(nameless, "a", "");
  EXPECT_THROW((void)Saved(nameless), RuntimeError);
  for (const char* encoding : {"IBM037", "IBM273", "UTF-16BE", "Shift_JIS", "KOI8-R"}) {
    XmlDocument document;
    XML::InstructGerman(document, "a", encoding);
    EXPECT_NE(Saved(document), "") << encoding;
  }
}

TEST_F(XmlDocumentTest, AFailedSaveLeavesNoFile) {
  XmlDocument document;
  XML::InstructGerman(document, "a", "no-such-encoding");
  EXPECT_THROW(Saved(document), RuntimeError);
  XML::InstructGerman(document, "", "UTF-8");
  int count = 0;
  EXPECT_THROW(document.Save(platform.files, platform.encodings, folder.Path("missing/out.xml"), count),
               RuntimeError);
  EXPECT_EQ(folder.Tree(), (std::vector<std::string>{"drives/", "program/"}));
  folder.Write("out.xml", "an older and longer file, which is replaced as a whole");
  EXPECT_EQ(Saved(document), "<?xml version=\"1.0\" encoding=\"UTF-8\"?><a/>");
}

TEST_F(XmlDocumentTest, WritesADeepTree) {
  constexpr int kDepth = 100000;
  XmlDocument document;
  XmlNode node = document.Root();
  std::string expected;
  for (int level = 0; level < kDepth; ++level) {
    node = document.AppendElement(node, "n");
    document.SetAttribute(node, "Identifier", "1");
    if (level + 1 < kDepth) expected += "<n Identifier=\"1\">";
  }
  expected += "<n Identifier=\"1\"/>";
  for (int level = 1; level < kDepth; ++level)
    expected += "</n>";
  EXPECT_EQ(Saved(document), expected);
  EXPECT_EQ(document.CountIdentified("n", "1"), kDepth);
}

TEST(XmlNames, FollowTheFourthEdition) {
  struct Case {
    const char* name;
    const char* offence;  // empty: accepted
  };
  const Case cases[] = {
      {"My_Doc.pdf-1", ""},  {"_H_STOBJECT_", ""}, {"a:b", ""},
      {"My Doc.pdf", " "},   {"1st", "1"},         {"-a", "-"},
      {".a", "."},           {"a<b", "<"},         {"a/b", "/"},
      {"\u00C4nderung", ""}, {"\u00D7", "\u00D7"}, {"a\u00B7", ""},
      {"\u00B7", "\u00B7"},  {"e\u0301", ""},      {"\u0301", "\u0301"},
      {"\u4E2D\u6587", ""},  {"\u9FA6", "\u9FA6"}, {"\u0219", "\u0219"},
      {"a\u0660", ""},       {"\u20AC", "\u20AC"}, {"a\U0001F600", "\U0001F600"},
      {"a\xE4", "\xE4"},     {"\u3007", ""},       {"\uAC00\uD7A3", ""},
  };
  for (const Case& row : cases)
    EXPECT_EQ(FindNameOffence(row.name), row.offence) << row.name;
}

TEST(XmlDocumentTree, RefusesWhatXmlHasNoPlaceFor) {
  XmlDocument document;
  const XmlNode root = document.AppendElement(document.Root(), "root");
  const XmlNode child = document.AppendElement(root, "child");
  EXPECT_THROW(document.AppendElement(document.Root(), "second"), RuntimeError);
  EXPECT_THROW(document.SetText(document.Root(), "text"), RuntimeError);
  EXPECT_THROW(document.Append(child, root), RuntimeError);
  EXPECT_THROW((void)document.NewElement(""), RuntimeError);
  EXPECT_THROW(document.SetAttribute(child, "a b", "1"), RuntimeError);
  EXPECT_THROW(document.SetAttribute(XmlNode(), "a", "1"), RuntimeError);
  EXPECT_EQ(root.Parent(), document.Root());
  document.Remove(child);
  EXPECT_FALSE(child.Parent());
  EXPECT_FALSE(root.FirstChild());
  document.Append(root, child);
  EXPECT_EQ(root.FirstChild(), child);
}

// A document under random changes, and the answers that a walk gives.
class RandomDocument {
 public:
  explicit RandomDocument(unsigned seed) : random_(seed) {
    nodes_.push_back(document_.AppendElement(document_.Root(), "a"));
  }

  void Change() {
    const XmlNode node = Any();
    switch (Number(7)) {
      case 0:
        nodes_.push_back(document_.NewElement(Name()));
        break;
      case 1:
      case 2:
        nodes_.push_back(document_.AppendElement(node, Name()));
        break;
      case 3:
        document_.SetAttribute(node, "Identifier", std::to_string(Number(3)));
        break;
      case 4:
        document_.SetAttribute(node, "Instance", std::to_string(Number(4)));
        break;
      case 5:
        if (node != nodes_.front()) document_.Remove(node);
        break;
      default:
        if (node != nodes_.front() && !IsAbove(node, nodes_[Number(nodes_.size())])) Move(node);
    }
  }

  void Check() const {
    for (const char* name : {"a", "b"}) {
      for (int identifier = 0; identifier < 3; ++identifier) {
        const std::string text = std::to_string(identifier);
        int count = 0;
        std::vector<XmlNode> firsts(4);
        for (const XmlNode& node : document_.ElementsByTagName(name)) {
          if (!node.HasAttribute("Identifier") || node.Attribute("Identifier") != text) continue;
          ++count;
          if (!node.HasAttribute("Instance")) continue;
          XmlNode& first = firsts[static_cast<std::size_t>(std::stoi(node.Attribute("Instance")))];
          if (!first) first = node;
        }
        ASSERT_EQ(document_.CountIdentified(name, text), count);
        for (int instance = 0; instance < 4; ++instance) {
          ASSERT_EQ(document_.FindIdentified(name, text, instance),
                    firsts[static_cast<std::size_t>(instance)]);
        }
      }
    }
  }

 private:
  std::size_t Number(std::size_t below) { return random_() % below; }
  XmlNode Any() { return nodes_[Number(nodes_.size())]; }
  const char* Name() { return Number(2) == 0 ? "a" : "b"; }
  void Move(XmlNode node) {
    const XmlNode target = Any();
    if (!IsAbove(node, target)) document_.Append(target, node);
  }
  static bool IsAbove(XmlNode node, XmlNode below) {
    while (below && below != node)
      below = below.Parent();
    return static_cast<bool>(below);
  }

  std::mt19937 random_;
  XmlDocument document_;
  std::vector<XmlNode> nodes_;
};

TEST(XmlDocumentIndex, StaysTrueUnderEveryChange) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    SCOPED_TRACE(seed);
    RandomDocument document(seed);
    for (int change = 0; change < 300; ++change) {
      document.Change();
      document.Check();
      if (testing::Test::HasFatalFailure()) return;
    }
  }
}

}  // namespace
}  // namespace tessel
