#include "tell.h"

#include "qt/message_box.h"
#include "qt/text.h"
#include "texts.h"

namespace tessel::client {

void Tell(const std::exception& error, qt::Language language, QWidget* parent) {
  Tell(qt::ToQt(error.what()), language, parent);
}

void Tell(const QString& text, qt::Language language, QWidget* parent) {
  MessageRequest request;
  request.text = qt::FromQt(text);
  request.title = qt::FromQt(texts::kError.In(language));
  request.icon = MessageIcon::kCritical;
  static_cast<void>(qt::ShowMessageBox(request, language, parent));
}

bool Confirm(const QString& text, qt::Language language, QWidget* parent) {
  const MessageRequest request{qt::FromQt(text), qt::FromQt(texts::kError.In(language)),
                               MessageIcon::kExclamation, MessageButtons::kYesNo};
  return qt::ShowMessageBox(request, language, parent) == MessageAnswer::kYes;
}

void TellAll(const QString& head, const QStringList& lines, qt::Language language, QWidget* parent) {
  constexpr int kMost = 15;
  if (lines.isEmpty()) return;
  QString text = head + QLatin1String("\n\n") + lines.mid(0, kMost).join(QLatin1Char('\n'));
  if (lines.size() > kMost) text += QLatin1Char('\n') + texts::kMore.In(language).arg(lines.size() - kMost);
  MessageRequest request{qt::FromQt(text), qt::FromQt(texts::kError.In(language)), MessageIcon::kExclamation};
  static_cast<void>(qt::ShowMessageBox(request, language, parent));
}

}  // namespace tessel::client
