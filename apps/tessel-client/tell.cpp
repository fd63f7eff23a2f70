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

}  // namespace tessel::client
