// What the widgets add to the model: place and size, captions, keys, modal order, errors.
#include "qt/qt_toolkit.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QTest>
#include <QTimer>
#include <deque>

#include "host/error.h"
#include "qt/caption_label.h"
#include "qt/looks.h"
#include "qt/tree_list_view.h"
#include "toolkit/modal_contract.h"

namespace tessel::test {
namespace {

std::shared_ptr<Window> MakeWindow(const std::string& name) {
  return std::make_shared<Window>(name, "Kestrix", Size{6990, 5070});
}

class QtWorld {
 public:
  ModalToolkit& Get() { return toolkit_; }
  void Then(const std::function<void()>& action) {
    if (actions_.empty()) NextTick();
    actions_.push_back(action);
  }

 private:
  void NextTick() {
    QTimer::singleShot(0, &context_, [this] { Tick(); });
  }
  void Tick() {
    if (actions_.empty()) return;
    NextTick();
    if (!toolkit_.TopWindow()) return;
    const auto action = actions_.front();
    actions_.pop_front();
    action();
  }

  QObject context_;
  std::deque<std::function<void()>> actions_;
  qt::QtToolkit toolkit_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Qt, ModalContract, QtWorld);

class QtToolkitTest : public ::testing::Test {
 protected:
  // Runs an action while the window waits for the user, then hides it.
  void WhileShown(const std::shared_ptr<Window>& shown, const std::function<void()>& action) {
    QTimer::singleShot(0, &context_, [=, this] {
      action();
      toolkit_.Hide(*shown);
    });
    toolkit_.ShowModal(shown);
  }
  template <class WidgetType>
  WidgetType& WidgetOf(const Control& control) {
    return dynamic_cast<WidgetType&>(*toolkit_.WidgetOf(control));
  }
  void Press(Qt::Key key) { QTest::keyClick(toolkit_.WidgetOf(*window_)->windowHandle(), key); }

  QObject context_;
  std::shared_ptr<Window> window_ = MakeWindow("Tessel_0");
  qt::QtToolkit toolkit_;
};

TEST_F(QtToolkitTest, PlacesWindowsAndFollowsTheUser) {
  int resizes = 0;
  window_->OnResize = [&] { ++resizes; };
  WhileShown(window_, [&] {
    QWidget& view = *toolkit_.WidgetOf(*window_);
    EXPECT_EQ(view.size(), QSize(466, 338)) << "client area at 15 twips a pixel";
    EXPECT_EQ(window_->Bounds().width, 7110);
    window_->SetBounds({1501, 752, 9007, 6001});
    EXPECT_EQ(view.pos(), QPoint(100, 50));
    EXPECT_EQ(window_->Bounds(), (Rect{1501, 752, 9007, 6001})) << "rounding to pixels is no user's doing";
    view.resize(500, 400);
    EXPECT_EQ(window_->Bounds(), (Rect{1501, 752, 500 * 15 + 120, 400 * 15 + 405}));
    view.move(30, 40);
    EXPECT_EQ(window_->Bounds().left, 450);
  });
  EXPECT_EQ(resizes, 2);
}

TEST_F(QtToolkitTest, ShowsDataAsItIs) {
  auto& button = window_->Add<Button>("Command1", -1, nullptr, Rect{0, 0, 2000, 400});
  button.SetCaption("Gears & Sons");
  auto& label = window_->Add<Label>("Label1", 2, nullptr, Rect{0, 600, 600, 255});
  label.SetCaption("A & B <b>narrow label</b>");
  auto& beside = window_->Add<Button>("Command2", -1, nullptr, Rect{1500, 600, 900, 255});
  auto& list = window_->Add<TreeList>("TreeView1", -1, nullptr, Rect{0, 1500, 3000, 2000}, true);
  list.AddNode("R&D\nsecond line", "1");
  WhileShown(window_, [&] {
    EXPECT_EQ(WidgetOf<QPushButton>(button).text(), "&Gears && Sons") << "with its Alt letter";
    EXPECT_EQ(WidgetOf<qt::CaptionLabel>(label).accessibleDescription(), "Label1(2)");
    EXPECT_EQ(WidgetOf<qt::NodeList>(list).model()->index(0, 0).data().toString(), "R&D second line");
    EXPECT_EQ(WidgetOf<qt::CaptionLabel>(label).width(), 96) << "up to what stands beside it";
    beside.SetVisible(false);
    EXPECT_GT(WidgetOf<qt::CaptionLabel>(label).width(), 120) << "as far as the caption needs";
    EXPECT_EQ(DifferencesOf(toolkit_, *window_), "");
  });
}

TEST_F(QtToolkitTest, KeysReachEverything) {
  std::string pressed;
  for (const char* name : {"Command1", "Command2", "Command3"}) {
    auto& button = window_->Add<Button>(name, -1, nullptr, Rect{0, 0, 1500, 375});
    button.OnClick = [&pressed, name] { pressed += std::string(name) + " "; };
    button.IsDefault = std::string(name) == "Command2";
    button.IsCancel = std::string(name) == "Command3";
  }
  auto& list = window_->Add<TreeList>("TreeView1", -1, nullptr, Rect{0, 600, 3000, 2000}, true);
  for (const char* text : {"Anchor", "Bolt", "Bracket", "Cover"})
    list.AddNode(text, text);
  list.OnNodeClick = [&](int node) { pressed += list.NodeAt(node).text + " "; };
  list.OnKeyDown = [&](char32_t key) { pressed += key == U' ' ? "space " : ""; };
  auto& box = window_->Add<CheckBox>("Check1", -1, nullptr, Rect{0, 3000, 3000, 255});
  WhileShown(window_, [&] {
    Press(Qt::Key_Return);  // the first control has the focus, a button answers Enter itself
    toolkit_.WidgetOf(list)->setFocus();
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Space, Qt::Key_B, Qt::Key_End,
                              Qt::Key_Return, Qt::Key_Escape, Qt::Key_Tab, Qt::Key_Space})
      Press(key);
    EXPECT_TRUE(box.Checked());
    EXPECT_TRUE(list.NodeAt(1).checked);
  });
  EXPECT_EQ(pressed, "Command1 Anchor Bolt space Bracket Cover Command2 Command3 ");
}

TEST_F(QtToolkitTest, TheBarMakesWayForItsCounter) {
  auto& counter = window_->Add<Label>("Label1", -1, nullptr, Rect{1560, 4155, 615, 330});
  auto& bar = window_->Add<ProgressBar>("ProgressBar1", -1, nullptr, Rect{2160, 4080, 4815, 375});
  counter.SetCaption("0 / 0");
  WhileShown(window_, [&] {
    counter.SetCaption("49 / 2000");
    const auto& label = WidgetOf<qt::CaptionLabel>(counter);
    const QRect barPlace = toolkit_.WidgetOf(bar)->geometry();
    EXPECT_GE(label.width(), label.CaptionWidth());
    EXPECT_GT(barPlace.left(), label.geometry().right());
    EXPECT_EQ(barPlace.right(), 464) << "where it ends anyway";
    bar.SetVisible(false);
    auto& done = window_->Add<Label>("Label2", -1, nullptr, Rect{2640, 4200, 4335, 255});
    done.SetCaption("Copied");
    counter.SetCaption("2000 / 2000 and more");
    QCoreApplication::processEvents();
    EXPECT_GE(label.width(), label.CaptionWidth());
    EXPECT_GT(toolkit_.WidgetOf(done)->x(), label.geometry().right());
  });
}

// By the Alt letters, and from a button that cannot be pressed any more to one that can.
TEST_F(QtToolkitTest, TheKeysAlwaysGoSomewhere) {
  std::string pressed;
  std::vector<Button*> buttons;
  for (const char* caption : {"Next", "Nothing", "Exit"}) {
    auto& button = window_->Add<Button>("Command" + std::to_string(buttons.size() + 1), -1, nullptr,
                                        Rect{0, 0, 1500, 375});
    button.SetCaption(caption);
    button.OnClick = [&pressed, &button] {
      pressed += button.Caption() + " ";
      button.SetEnabled(false);
    };
    buttons.push_back(&button);
  }
  WhileShown(window_, [&] {
    ASSERT_TRUE(QTest::qWaitForWindowActive(toolkit_.WidgetOf(*window_)));
    QTest::keyClick(toolkit_.WidgetOf(*window_), Qt::Key_O, Qt::AltModifier);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !pressed.empty(); })) << "it goes down and up again";
    Press(Qt::Key_Return);
    QCoreApplication::processEvents();
    Press(Qt::Key_Return);
  });
  EXPECT_EQ(pressed, "Nothing Next Exit ");
  EXPECT_EQ(toolkit_.WidgetOf(*buttons[0])->accessibleName(), "Next");
}

// Nothing but the keyboard chooses the only company of a list.
TEST_F(QtToolkitTest, TheOnlyNodeCanBeChosenByKey) {
  auto& list = window_->Add<TreeList>("TreeView1", -1, nullptr, Rect{0, 0, 3000, 2000}, false);
  list.AddNode("Anchor", "1");
  list.Select(0);
  std::string clicked;
  list.OnNodeClick = [&](int node) { clicked += list.NodeAt(node).text + " "; };
  WhileShown(window_, [&] {
    toolkit_.WidgetOf(list)->setFocus();
    Press(Qt::Key_Down);
  });
  EXPECT_EQ(clicked, "Anchor ");
}

TEST_F(QtToolkitTest, TheProgramsSizeEndsTheUsersMaximising) {
  WhileShown(window_, [&] {
    QWidget& view = *toolkit_.WidgetOf(*window_);
    view.showMaximized();
    QCoreApplication::processEvents();
    EXPECT_GT(window_->Bounds().width, 7110);
    window_->SetBounds({1500, 750, 7110, 5475});
    EXPECT_FALSE(view.isMaximized());
    EXPECT_EQ(QRect(view.pos(), view.size()), QRect(100, 50, 466, 338));
    window_->SetBounds({-90000, 750, 7110, 5475});
    toolkit_.BringToTop(*window_);
    EXPECT_TRUE(view.screen()->geometry().contains(view.geometry())) << "a screen that is gone";
  });
}

TEST_F(QtToolkitTest, TextKeepsWhatTheModelAllows) {
  auto& line = window_->Add<TextBox>("Text1", -1, nullptr, Rect{0, 0, 3000, 315}, false);
  auto& lines = window_->Add<TextBox>("Text2", -1, nullptr, Rect{0, 600, 3000, 900}, true);
  WhileShown(window_, [&] {
    auto& widget = WidgetOf<QLineEdit>(line);
    widget.setFocus();
    QTest::keyClicks(&widget, "abc");
    line.SetText("from the program");
    EXPECT_EQ(widget.text(), "from the program");
    QTest::keyClicks(&widget, ">");
    widget.insert(QString(QChar(1)));
    QTest::keyClicks(&widget, ">");
    EXPECT_EQ(widget.text(), ">\uFFFD>from the program") << "control characters are shown as such";
    widget.insert(QStringLiteral("a\1b\2c"));
    QTest::keyClicks(&widget, "-");
    EXPECT_EQ(widget.text(), ">\uFFFD>a\uFFFDb\uFFFDc-from the program")
        << "typing goes on behind what was pasted";

    auto& text = WidgetOf<QPlainTextEdit>(lines);
    lines.SetText("first\r\nsecond\u00a0line");
    text.setFocus();
    QTextCursor cursor = text.textCursor();
    cursor.setPosition(5);
    text.setTextCursor(cursor);
    text.insertPlainText(QStringLiteral(",\1 a\2"));
    QTest::keyClicks(&text, "b");
    EXPECT_EQ(text.toPlainText().section('\n', 0, 0), "first,\uFFFD a\uFFFDb");
  });
  EXPECT_EQ(line.Text(), ">\uFFFD>a\uFFFDb\uFFFDc-from the program");
  EXPECT_EQ(lines.Text(), "first,\uFFFD a\uFFFDb\nsecond\u00a0line");
}

TEST_F(QtToolkitTest, OnlyTheInnermostWindowCanBeUsed) {
  const auto second = MakeWindow("Tessel_1");
  int pressed = 0;
  auto& button = window_->Add<Button>("Command1", -1, nullptr, Rect{0, 0, 1500, 375});
  button.OnClick = [&] {
    if (++pressed > 1) return;
    WhileShown(second, [&] {
      QTest::mouseClick(toolkit_.WidgetOf(button), Qt::LeftButton);
      EXPECT_EQ(toolkit_.TopWindow(), second);
      EXPECT_TRUE(window_->Visible());
      toolkit_.Hide(*window_);
      EXPECT_EQ(toolkit_.TopWindow(), second) << "a pending show waits for its turn to return";
    });
  };
  QTimer::singleShot(0, &context_, [&] { QTest::mouseClick(toolkit_.WidgetOf(button), Qt::LeftButton); });
  toolkit_.ShowModal(window_);
  EXPECT_EQ(pressed, 1);
  EXPECT_EQ(toolkit_.TopWindow(), nullptr);
}

TEST_F(QtToolkitTest, AWindowShownAgainFromAnotherComesOnTop) {
  const auto second = MakeWindow("Tessel_1");
  int pressed = 0;
  auto& button = window_->Add<Button>("Command1", -1, nullptr, Rect{0, 0, 1500, 375});
  button.OnClick = [&] { ++pressed; };
  second->OnActivate = [&] {
    QTimer::singleShot(0, &context_, [&] {
      WhileShown(window_, [&] {
        QTest::mouseClick(toolkit_.WidgetOf(*window_)->windowHandle(), Qt::LeftButton, {}, QPoint(20, 10));
      });
      toolkit_.Hide(*second);
    });
  };
  window_->OnActivate = [&] {
    window_->OnActivate = nullptr;
    toolkit_.ShowModal(second);
  };
  toolkit_.ShowModal(window_);
  EXPECT_EQ(pressed, 1);
}

TEST_F(QtToolkitTest, ErrorsEndTheShowAndGoToTheCaller) {
  auto& button = window_->Add<Button>("Command1", -1, nullptr, Rect{0, 0, 1500, 375});
  button.OnClick = [] { throw RuntimeError(13, "Type mismatch"); };
  const auto click = [&] { QTest::mouseClick(toolkit_.WidgetOf(button), Qt::LeftButton); };
  QTimer::singleShot(0, &context_, click);
  EXPECT_THROW(toolkit_.ShowModal(window_), RuntimeError);
  EXPECT_FALSE(window_->Visible());

  bool pumped = false;
  WhileShown(window_, [&] {
    QTimer::singleShot(0, &context_, click);
    EXPECT_THROW(toolkit_.PumpEvents(), RuntimeError);
    pumped = window_->Visible();
  });
  EXPECT_TRUE(pumped) << "the error is that of the pump, the page stays";
}

TEST_F(QtToolkitTest, TheFrameAsksTheModel) {
  std::vector<CloseReason> reasons;
  bool unloaded = false;
  window_->OnQueryClose = [&](CloseReason reason) {
    reasons.push_back(reason);
    return reasons.size() > 1;
  };
  window_->OnUnload = [&] { unloaded = true; };
  QTimer::singleShot(0, &context_, [&] {
    toolkit_.WidgetOf(*window_)->close();
    EXPECT_TRUE(window_->Visible());
    toolkit_.WidgetOf(*window_)->close();
  });
  toolkit_.ShowModal(window_);
  EXPECT_TRUE(unloaded);
  EXPECT_EQ(reasons, (std::vector{CloseReason::kUserCommand, CloseReason::kUserCommand}));
}

TEST_F(QtToolkitTest, BoxesHaveTheirTexts) {
  toolkit_.SetLanguage(qt::Language::kGerman);
  QStringList seen;
  const auto answerNext = [&](QMessageBox::ButtonRole role) {
    QTimer::singleShot(0, &context_, [&seen, role] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      box->findChild<QShortcut*>()->activated();
      seen << box->windowTitle() << box->text() << QString::number(box->icon());
      for (QAbstractButton* button : box->buttons()) {
        seen << button->text();
        if (box->buttonRole(button) == role) QTimer::singleShot(0, button, &QAbstractButton::click);
      }
    });
  };
  answerNext(QMessageBox::YesRole);
  EXPECT_EQ(toolkit_.ShowMessage({"<b>R&D</b>", "", MessageIcon::kNone, MessageButtons::kYesNo}),
            MessageAnswer::kYes);
  answerNext(QMessageBox::AcceptRole);
  EXPECT_EQ(toolkit_.ShowMessage({"text", "Kestrix", MessageIcon::kCritical}), MessageAnswer::kOk);
  EXPECT_EQ(seen, (QStringList{"prjTessel", "<b>R&D</b>", "0", "Ja", "Nein", "Kestrix", "text", "3", "OK"}));
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "text") << "for whoever passes an error on";
}

}  // namespace
}  // namespace tessel::test
