// Text between the core (UTF-8) and Qt.
#pragma once

#include <QString>
#include <QTextDocument>
#include <string>

namespace tessel::qt {

inline QString ToQt(const std::string& text) {
  return QString::fromStdString(text);
}

inline std::string FromQt(const QString& text) {
  return text.toStdString();
}

// For captions of buttons, boxes, frames and menus, where Qt takes "&" for the mark of a mnemonic.
inline QString Literal(const std::string& text) {
  return ToQt(text).replace(QLatin1Char('&'), QLatin1String("&&"));
}

// A tool tip that shows the text as it is, whatever signs stand in it.
inline QString ToolTip(const QString& text) {
  return text.isEmpty() ? text : Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal);
}

}  // namespace tessel::qt
