#include "config/system_tool.h"

#include <gtest/gtest.h>

#include "support/expect_error.h"
#include "support/machine.h"
#include "support/onlooker.h"
#include "toolkit/window.h"

namespace tessel {
namespace {

class SystemToolTest : public testing::Test {
 protected:
  class NamedLanguage : public SystemInformation {
   public:
    [[nodiscard]] std::string LanguageName() const override { return name; }
    [[nodiscard]] std::string DisplayedIconFile(const std::string& path) const override {
      return path + ".ico";
    }
    std::string name = "Deutsch (Deutschland)";
  };

  SystemToolTest() { tool_.SetIniFile(folder_.Path("x.ini")); }

  // A list as one text.
  std::string List(const std::string& section, const std::string& filter) {
    std::string text;
    for (const auto& [name, value] : tool_.ReadSettingList(section, filter))
      text += name + ">" + value + ";";
    return text;
  }

  test::Machine machine_;
  const test::TemporaryFolder& folder_ = machine_.folder;
  NamedLanguage language_;
  Platform platform_{
      machine_.platform.files, machine_.platform.encodings, machine_.clock, machine_.pauser,
      machine_.launcher,       machine_.platform.profiles,  language_,      machine_.platform.program};
  test::Onlooker user_;
  SystemTool tool_{platform_, user_};
};

TEST_F(SystemToolTest, SettingsAreReadUpToTheBufferAndWritten) {
  EXPECT_EQ(tool_.GetIniFile().AsText(), folder_.Path("x.ini"));
  EXPECT_EQ(tool_.ReadSetting("Trace", "TracePath", "c:\\"), "c:\\");
  folder_.Write("x.ini", "[Trace]\r\nTracePath=" + std::string(300, 'x') + "\r\n");
  EXPECT_EQ(tool_.ReadSetting("Trace", "TracePath", "c:\\"), std::string(255, 'x'));
  EXPECT_NE(tool_.WriteSetting("Trace", "TracePath", "d:\\"), 0);
  EXPECT_EQ(tool_.ReadSetting("trace", "tracepath", "c:\\"), "d:\\");
}

TEST_F(SystemToolTest, ListsTheLinesThatHoldTheFilter) {
  EXPECT_EQ(List("A", ""), "");
  folder_.Write("x.ini",
                "Mail0=before\r\n;x [A] y\r\nMail=1\r\n\r\nMailStructure=2=3\r\nnot mail\r\nOdette=[x]\r\n"
                "Gr\xFC\xDF\x65=4\r\n[B]\r\nMail=5\r\n");
  EXPECT_EQ(List("A", "Mail"), "Mail>1;MailStructure>2=3;");
  EXPECT_EQ(List("A", ""), "Mail>1;MailStructure>2=3;Odette>[x];Grüße>4;");
  EXPECT_EQ(List("A", "rüß"), "");  // the line with the bracket before it ends the section
  EXPECT_EQ(List("B", ""), "Mail>5;");
  EXPECT_EQ(List("C", ""), "");
}

TEST_F(SystemToolTest, DeletingDropsEveryLineOfTheSectionWithTheKey) {
  tool_.DeleteSetting("A", "Mail");
  EXPECT_FALSE(folder_.Exists("x.ini"));
  const std::string before = "Mail=0\n[A]\nMail=1\r\nOdette=1\r\nMailStructure=2\r\n[Mail]\r\nx=y\r\n";
  folder_.Write("x.ini", before + "[B]\r\nMail=3");
  tool_.DeleteSetting("A", "Mail");
  EXPECT_EQ(folder_.Read("x.ini"), "Mail=0\r\n[A]\r\nOdette=1\r\nx=y\r\n[B]\r\nMail=3\r\n");
  tool_.DeleteSetting("A", "");
  EXPECT_EQ(folder_.Read("x.ini"), "Mail=0\r\n[A]\r\n[B]\r\nMail=3\r\n");
}

TEST_F(SystemToolTest, TheLanguageComesWholeOrInParts) {
  EXPECT_EQ(tool_.GetSystemLanguage(0), "Deutsch (Deutschland)");
  EXPECT_EQ(tool_.GetSystemLanguage(1), "Deutsch");
  EXPECT_EQ(tool_.GetSystemLanguage(2), "(Deutschland)");
  language_.name = "Esperanto";
  EXPECT_EQ(tool_.GetSystemLanguage(1), "Esperanto");
  EXPECT_EQ(test::ErrorNumberOf([&] { (void)tool_.GetSystemLanguage(2); }), 9);
}

TEST_F(SystemToolTest, TheReadOnlyFlagIsRemovedFromTheFileMeant) {
  const std::string first = folder_.Write("a.txt", "");
  const std::string second = folder_.Write("b.txt", "");
  for (const std::string& path : {first, second})
    platform_.files.SetReadOnly(path, true);
  std::string file;
  tool_.Remove_ReadOnly_Flag(folder_.Path(), "none.txt", file);
  EXPECT_EQ(file, "");
  tool_.Remove_ReadOnly_Flag(folder_.Path(), "a.txt", file);
  EXPECT_EQ(file, first);
  tool_.Remove_ReadOnly_Flag(folder_.Path(), "b.txt", file);
  EXPECT_FALSE(platform_.files.IsReadOnly(first));
  EXPECT_TRUE(platform_.files.IsReadOnly(second));
}

TEST_F(SystemToolTest, WindowsAndIconsGoToTheSystem) {
  Window window("Tessel_0", "Kestrix", {100, 100});
  tool_.VBFormOnTop(window);
  EXPECT_EQ(user_.broughtToTop, 1);
  EXPECT_EQ(tool_.GetDisplayedIconFileName("a.pdf"), "a.pdf.ico");
}

}  // namespace
}  // namespace tessel
