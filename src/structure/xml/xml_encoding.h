// Whether a document can be written in an encoding so that every reader of XML can read it.
#pragma once

#include <string>

#include "platform/text_encoding.h"

namespace tessel {

// `name` is the one that the document declares. Error 5 for a name that XML does not allow in a declaration,
// for an encoding whose declaration readers cannot make out, and for one that lacks a character of markup.
void CheckXmlEncoding(const TextEncodings& encodings, const TextEncoding& encoding, const std::string& name);

}  // namespace tessel
