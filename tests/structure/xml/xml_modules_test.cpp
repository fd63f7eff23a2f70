// The modules XML and DX_XML.
#include <gtest/gtest.h>

#include "structure/xml/dx_xml.h"
#include "structure/xml/xml.h"
#include "support/machine.h"
#include "support/recording_trace.h"

namespace tessel {
namespace {

class XmlModulesTest : public testing::Test, public test::Machine {
 protected:
  XmlModulesTest() { XML::InstructGerman(*document, "root", "UTF-8"); }

  std::string Saved() {
    const std::string path = folder.Path("out.xml");
    XML::SaveXMLFile(*document, platform.files, platform.encodings, trace.trace, path);
    const std::string text = folder.Read("out.xml");
    return text.substr(text.find("?>") + 2);
  }
  XmlNode Root() { return document->ElementsByTagName("root").front(); }

  test::RecordingTrace trace;
  XmlDocumentPtr document = XML::InitXMLDoc();
};

TEST_F(XmlModulesTest, DxNodesAreRepairedAndNumbered) {
  DX_XML::CreateDXNodeElement(*document, "My Doc.pdf", "v", Root(), "");
  DX_XML::CreateDXNodeElement(*document, "", "", Root(), "1_2");
  DX_XML::CreateDXNodeElement(*document, "1 a>1-->\xC3\xA4", "x", Root(), "1_2");
  DX_XML::CreateDXNodeElement(*document, std::string("n\0m", 3), "x", Root(), "");
  for (int i = 0; i < 3; ++i)
    DX_XML::CreateDXNodeElement(*document, "n", "x", Root(), "1_2");
  const XmlNode detached = DX_XML::CreateDXNodeElement(*document, "n", "x", XmlNode(), "1_2");

  EXPECT_EQ(Saved(),
            "<root><My_Doc.pdf><![CDATA[v]]></My_Doc.pdf>"
            "<_NoName_ Identifier=\"1_2\" Instance=\"0\"><![CDATA[]]></_NoName_>"
            "<__a__--_\xC3\xA4 Identifier=\"1_2\" Instance=\"0\"><![CDATA[x]]></__a__--_\xC3\xA4>"
            "<n_m><![CDATA[x]]></n_m>"
            "<n Identifier=\"1_2\" Instance=\"0\"><![CDATA[x]]></n>"
            "<n Identifier=\"1_2\" Instance=\"1\"><![CDATA[x]]></n>"
            "<n Identifier=\"1_2\" Instance=\"2\"><![CDATA[x]]></n></root>");
  EXPECT_EQ(detached.Attribute("Instance"), "3");
  const XmlNode second = DX_XML::FindSpecificDXNode("1_2", *document, 1, "n");
  EXPECT_EQ(second, document->ElementsByTagName("n")[1]);
  EXPECT_FALSE(DX_XML::FindSpecificDXNode("1_2", *document, 3, "n"));
  EXPECT_FALSE(DX_XML::FindSpecificDXNode("9_9", *document, 0, "n"));
}

TEST_F(XmlModulesTest, AParentThatTakesNoElementLeavesItDetached) {
  const XmlNode second = DX_XML::CreateDXNodeElement(*document, "n n", "v", document->Root(), "1_2");
  EXPECT_EQ(second.Name() + second.Text() + second.Attribute("Identifier"), "n_nv1_2");
  EXPECT_FALSE(second.Parent());
  const XmlNode text = DX_XML::CreateDXNodeElement(*document, "a", "v", Root(), "").FirstChild();
  EXPECT_EQ(XML::CreateSaveModeElement(*document, "b", "w", text, "3").Text(), "w");
  EXPECT_EQ(Saved(), "<root><a><![CDATA[v]]></a></root>");
}

TEST_F(XmlModulesTest, PlainElementsAndAttributes) {
  const XmlNode element = XML::CreateElement(*document, "e", "text", Root());
  EXPECT_EQ(XML::CreateAttribute(*document, "Created by", element, "u"), "u");
  XML::CreateAttribute(*document, "Created by", element, "v");
  XML::CreateSaveModeElement(*document, "", "t\x02", Root(), "7");
  XML::CreateSaveModeElement(*document, "NoName", "", Root(), "7");
  EXPECT_THROW(XML::CreateElement(*document, "a b", "", Root()), RuntimeError);
  EXPECT_EQ(Saved(),
            "<root><e Created_by=\"v\">text</e><NoName Identifier=\"7\" Instance=\"0\">t\xEF\xBF\xBD</NoName>"
            "<NoName Identifier=\"7\" Instance=\"1\"/></root>");
  EXPECT_EQ(trace.writer->Lines(),
            std::vector<std::string>{"Characters replaced that XML or the encoding does not allow "
                                     "(SaveXMLFile/XML): 1 in " +
                                     folder.Path("out.xml")});
}

TEST_F(XmlModulesTest, SearchesWalkDepthFirst) {
  // <root><a>1<b>2</b></a><b k="v">3</b><c><b>4</b></c></root>
  const XmlNode a = XML::CreateElement(*document, "a", "1", Root());
  const XmlNode inner = XML::CreateElement(*document, "b", "2", a);
  const XmlNode b = XML::CreateElement(*document, "b", "3", Root());
  XML::CreateAttribute(*document, "k", b, "v");
  const XmlNode c = XML::CreateElement(*document, "c", "", Root());
  const XmlNode last = XML::CreateElement(*document, "b", "4", c);
  const XML::XmlNodeList nodes{a, b, c};

  std::uint16_t counter = 0;
  const auto find = [&](const char* name, std::uint16_t wanted) {
    counter = 0;
    return XML::FindSpecificNode(name, nodes, wanted, counter);
  };
  EXPECT_EQ(find("b", 0), inner);
  EXPECT_EQ(find("b", 1), b);
  EXPECT_EQ(find("b", 2), last);
  EXPECT_FALSE(find("b", 3));
  EXPECT_EQ(counter, 3);
  counter = 0;
  EXPECT_EQ(XML::FindSpecificNode_byTypedValue("3", nodes, 0, counter), b);
  counter = 0;
  EXPECT_EQ(XML::FindSpecificNode_byTypedValue("3", nodes, 1, counter), b.FirstChild());
  EXPECT_EQ(XML::ReadNodeValue(nodes, "a"), "12");
  EXPECT_EQ(XML::ReadNodeValue(nodes, "z"), "");
  counter = 0;
  EXPECT_EQ(XML::ReadAttributeValue("b", nodes, "k", 1, counter), "v");
  EXPECT_EQ(XML::getAttributeItemByName(b.Attributes(), "k"), 0);
  EXPECT_EQ(XML::getAttributeItemByName(b.Attributes(), "z"), -1);

  counter = 0;
  XML::DeleteSpecificNode(*document, "b", nodes, 2, counter);
  EXPECT_EQ(Saved(), "<root><a>1<b>2</b></a><b k=\"v\">3</b><c/></root>");
  XML::DeleteSpecificNode(*document, "b", nodes, 65535, counter);
  EXPECT_EQ(Saved(), "<root><a>1</a><c/></root>");
}

}  // namespace
}  // namespace tessel
