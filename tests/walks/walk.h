// A walk through the pages as data: what a person does and answers, the same for every toolkit.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "headless/user_actions.h"
#include "toolkit/toolkit.h"
#include "walks/sample_company.h"

namespace tessel::test {

struct Step {
  enum class Kind { kClick, kClickNode, kClickNodeBox, kKey, kEnter, kEscape, kType, kResize, kClose };
  Kind kind;
  std::string control = {};
  NodeChoice node = 0;
  MouseButton button = MouseButton::kLeft;
  char32_t key = 0;
  std::string text = {};
  Rect bounds = {};
};

class Walk {
 public:
  Walk& Click(const std::string& control) { return Add({Step::Kind::kClick, control}); }
  Walk& ClickNode(const std::string& control, const NodeChoice& node,
                  MouseButton button = MouseButton::kLeft) {
    return Add({Step::Kind::kClickNode, control, node, button});
  }
  Walk& ClickNodeBox(const std::string& control, const NodeChoice& node) {
    return Add({Step::Kind::kClickNodeBox, control, node});
  }
  // In the list that is named.
  Walk& Press(const std::string& control, char32_t key) {
    return Add({Step::Kind::kKey, control, 0, MouseButton::kLeft, key});
  }
  Walk& Enter() { return Add({Step::Kind::kEnter}); }
  Walk& Escape() { return Add({Step::Kind::kEscape}); }
  Walk& Type(const std::string& control, const std::string& text) {
    return Add({Step::Kind::kType, control, 0, MouseButton::kLeft, 0, text});
  }
  Walk& Resize(const Rect& bounds) {
    Step step{Step::Kind::kResize};
    step.bounds = bounds;
    return Add(step);
  }
  Walk& Close() { return Add({Step::Kind::kClose}); }
  // Answers, in the order in which they are asked for, one queue for each kind of question.
  Walk& Answer(MessageAnswer answer = MessageAnswer::kOk) {
    boxes.push_back(answer);
    return *this;
  }
  Walk& Choose(const std::string& menuItem) {
    menus.push_back(menuItem);
    return *this;
  }
  Walk& AnswerLifeCycle(int answer) {
    lifeCycles.push_back(answer);
    return *this;
  }

  std::deque<Step> steps;
  std::deque<MessageAnswer> boxes;
  std::deque<std::string> menus;
  std::deque<int> lifeCycles;

 private:
  Walk& Add(Step step) {
    steps.push_back(std::move(step));
    return *this;
  }
};

// What a walk is made in: calls of hooks.
using Hooks = std::function<void(HostedProgram& hosted)>;

// Makes the walk over a toolkit. The transcript of what was seen (see ScriptDriver), and before each step the
// state of the window on top.
[[nodiscard]] std::string WalkHeadless(SampleCompany& company, const Walk& walk, const Hooks& hooks);
// In the windows of the toolkit that the test program is built with.
[[nodiscard]] std::string WalkDrawn(SampleCompany& company, const Walk& walk, const Hooks& hooks);

// The controls of a window, one line each.
[[nodiscard]] std::string DumpOf(const Window& window);

}  // namespace tessel::test
