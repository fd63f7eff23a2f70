// The embedded client's own dialogs as windows.
#pragma once

#include <QIcon>
#include <QPointer>
#include <functional>
#include <vector>

#include "embedded/dialogs/host_dialogs.h"
#include "qt/language.h"
#include "qt/qt_toolkit.h"

class QDialog;

namespace tessel::qt {

class QtHostDialogs : public embedded::HostDialogs {
 public:
  // Dialogs belong to the window on top of the toolkit.
  explicit QtHostDialogs(const QtToolkit& toolkit) : toolkit_(toolkit) {}
  ~QtHostDialogs() override;

  void SetLanguage(Language language) { language_ = language; }
  // The login name that the login dialog offers.
  void SetUser(const QString& loginName) { user_ = loginName; }

  // A line below the login dialog's fields; empty for none.
  void SetLoginHint(const QString& hint) { loginHint_ = hint; }

  // Called when objects are to be shown with their new state.
  std::function<void(const ObjectKey&)> OnRefresh;
  // The picture of a class; without it objects are listed without pictures.
  std::function<QIcon(ClassId)> IconOf;

  // HostDialogs
  [[nodiscard]] int ConfirmLifeCycle(const embedded::LifeCycleRequest& request) override;
  [[nodiscard]] int ShowObject(const embedded::ObjectDialogRequest& request) override;
  [[nodiscard]] std::vector<std::size_t> SelectObjects(
      const embedded::SelectionDialogRequest& request) override;
  [[nodiscard]] embedded::LoginAnswer Login() override;
  void ShowSystemMessage(const std::vector<std::string>& texts) override;
  void RefreshObject(const ObjectKey& key, int mode) override;

 private:
  [[nodiscard]] QIcon Icon(const ObjectKey& key) const;

  const QtToolkit& toolkit_;
  Language language_ = Language::kEnglish;
  QString user_;
  QString loginHint_;
  std::vector<QPointer<QDialog>> modeless_;
};

}  // namespace tessel::qt
