// What the client's dialogs are put together from.
#pragma once

#include <QDialog>
#include <QDialogButtonBox>
#include <QVBoxLayout>

#include "qt/language.h"

namespace tessel::qt {

inline constexpr BothTexts kOkText{"OK", "OK"};
inline constexpr BothTexts kCancelText{"Cancel", "Abbrechen"};

// The size, or as much of it as the screen of the window has room for beside the frame.
[[nodiscard]] QSize OnScreen(const QSize& size, const QWidget& window);

// A dialog that tells a closing through the frame from a cancel.
class HostDialog : public QDialog {
 public:
  // Answers of a host dialog.
  static constexpr int kOk = 1;
  static constexpr int kCancelled = 2;
  static constexpr int kClosed = 7;

  // The name is the object name, the title the accessible name.
  HostDialog(const QString& name, const QString& title, QWidget* parent);

  [[nodiscard]] QVBoxLayout& Rows() { return *rows_; }
  // Ends the dialog with a row of buttons: OK as the default, and Cancel when there is a choice.
  QDialogButtonBox* AddButtons(Language language, bool withCancel);
  // Runs the dialog: one of the answers above.
  [[nodiscard]] int Ask();

 protected:
  void closeEvent(QCloseEvent* event) override;
  // Never larger than the screen that it appears on.
  void showEvent(QShowEvent* event) override;

 private:
  QVBoxLayout* rows_;
};

}  // namespace tessel::qt
