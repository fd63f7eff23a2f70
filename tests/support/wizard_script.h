// What a person does page by page.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "support/world.h"

namespace tessel::test {

inline constexpr int kMail = 1;
inline constexpr int kMailStructure = 2;
inline constexpr int kOdette = 3;
inline constexpr int kCustom = 4;
inline constexpr int kNoSend = 5;

inline const SettingLines kSingleRecipient{{"Settings", {"AllowMultiRecipientSelection=0"}}};

inline void GoToSendMode(World& world) {
  world.driver.Click("Command1");
}

inline void GoToSendData(World& world, int mode) {
  GoToSendMode(world);
  world.driver.Check("Check1(" + std::to_string(mode) + ")").Click("Command1");
}

inline void CopyAll(World& world) {
  world.driver.Check("Check1").Click("Command1");
}

// From the start to the page after the copy.
inline void GoBehindSendData(World& world, int mode) {
  GoToSendData(world, mode);
  CopyAll(world);
  world.driver.Click("Command1");
}

inline void ChoosePair(World& world, const std::string& customer, const std::string& contact) {
  world.driver.ClickNode("TreeView1", customer).ClickNode("TreeView2", contact);
}

inline void CollectPair(World& world, const std::string& customer, const std::string& contact) {
  ChoosePair(world, customer, contact);
  world.driver.Click("Command4");
}

// Looks at a page in the middle of the script.
template <class Look>
void LookAt(World& world, const std::string& page, Look look) {
  world.driver.Do([&world, page, look](UserActions&) {
    ASSERT_EQ(world.toolkit.TopWindow()->Name(), page);
    look(world.PageWindow(page));
  });
}

inline std::string NodesOf(const TreeList& list) {
  std::string nodes;
  for (int node = 0; node < list.NodeCount(); ++node) {
    const TreeList::Node& shown = list.NodeAt(node);
    nodes += shown.text + "|" + shown.tag + (shown.checked ? "|x" : "") + "\n";
  }
  return nodes;
}

}  // namespace tessel::test
