// Free select statements and searches of one class.
#pragma once

#include "embedded/session/session.h"
#include "host/object_store.h"

namespace tessel::embedded {

// A class query without a select list gives all attributes, and its rows come in the order of their object
// ids. A free query is one "select" on the tables of classes and link classes and on MESSAGE_STORE.
[[nodiscard]] PcQueryPtr NewQuery(EmbeddedSessionPtr session);

// Column type under which a record list keeps values of an attribute.
[[nodiscard]] ColumnType ColumnTypeOf(AttributeType type);

}  // namespace tessel::embedded
