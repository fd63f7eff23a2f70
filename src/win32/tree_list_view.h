// Tree lists with check boxes and icons.
#pragma once

#include "toolkit/tree_list.h"
#include "win32/control_view.h"

namespace tessel::win32 {

[[nodiscard]] std::unique_ptr<ControlView> MakeTreeListView(TreeList& list, const Ground& ground);

// The item of a node in the native tree of a list; null when there is none.
[[nodiscard]] HTREEITEM ItemOfNode(HWND tree, int node);

}  // namespace tessel::win32
