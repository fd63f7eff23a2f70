#include "win32/tree_list_view.h"

#include <algorithm>
#include <unordered_map>
#include <utility>
#include <vector>

#include "win32/handles.h"
#include "win32/picture.h"
#include "win32/text.h"

namespace tessel::win32 {
namespace {

constexpr double kIconSide = 240;  // twips
constexpr UINT kSettle = WM_APP;
constexpr char32_t kBeyondCharacters = 0x1000000;  // keys without a character have codes above all of them
constexpr char32_t kDelete = 127;
constexpr int kNoImage = 0;  // an empty picture stands at the head of the image list

constexpr UINT StateOf(bool checked) {
  return INDEXTOSTATEIMAGEMASK(checked ? 2U : 1U);
}

bool IsStep(WPARAM key) {
  return key == VK_UP || key == VK_DOWN || key == VK_HOME || key == VK_END;
}

class TreeListView : public ControlView {
 public:
  TreeListView(TreeList& list, const Ground& ground)
      : ControlView(list, ground, WC_TREEVIEWW,
                    WS_TABSTOP | TVS_SHOWSELALWAYS | TVS_FULLROWSELECT | TVS_DISABLEDRAGDROP,
                    WS_EX_CLIENTEDGE),
        list_(list) {
    // Only now does the tree make the pictures of the boxes.
    if (list.HasCheckBoxes()) {
      SetWindowLongPtrW(Handle(), GWL_STYLE, GetWindowLongPtrW(Handle(), GWL_STYLE) | TVS_CHECKBOXES);
    }
    SetWindowSubclass(Handle(), &TreeListView::Procedure, 0, 0);
    stale_ = true;
  }
  void Take(Change change) override {
    if (change == Change::kImages) images_.reset();
    if (change == Change::kNodes || change == Change::kImages) SettleLater();
    if (change == Change::kSelection) ShowSelection();
    if (change == Change::kValue) MarkLater();
  }
  void Settle() override {
    if (stale_) Reload();
    if (marksStale_) ShowMarks();
  }
  [[nodiscard]] bool TakesFocus() const override { return true; }
  void KeyOfWindow(char32_t key) override {
    On().queue([&list = list_, key] { list.UserPressKey(key); });
  }
  // The control decides what a gesture comes to; the tree follows, it never changes by itself.
  LRESULT Asked(const NMHDR& header) override {
    return header.code == TVN_SELCHANGINGW && !following_ ? TRUE : FALSE;
  }

 private:
  // What the mouse is at: a row, and its check box or not; no row: -1.
  struct Spot {
    int row = -1;
    bool onCheckBox = false;
    friend bool operator==(const Spot&, const Spot&) = default;
  };

  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wide, LPARAM lParam, UINT_PTR,
                                    DWORD_PTR) {
    if (message == WM_NCDESTROY) {
      RemoveWindowSubclass(window, &TreeListView::Procedure, 0);
      return DefSubclassProc(window, message, wide, lParam);
    }
    auto* view = static_cast<TreeListView*>(Of(window));
    if (view != nullptr && view->Handled(message, wide, lParam)) return view->answer_;
    const LRESULT result = DefSubclassProc(window, message, wide, lParam);
    if (view != nullptr && message == WM_PAINT) view->DrawFocus();
    if (view != nullptr && (message == WM_SETFOCUS || message == WM_KILLFOCUS))
      InvalidateRect(window, nullptr, TRUE);
    return result;
  }

  bool Handled(UINT message, WPARAM wide, LPARAM lParam) {
    answer_ = 0;
    const POINT point{static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
    switch (message) {
      case kSettle:
        Settle();
        return true;
      case WM_PAINT:
        Settle();
        return false;
      case WM_GETDLGCODE:
        answer_ = DLGC_WANTARROWS | DLGC_WANTCHARS;
        return true;
      case WM_LBUTTONDOWN:
      case WM_LBUTTONDBLCLK:
      case WM_RBUTTONDOWN:
        SetFocus(Handle());
        Settle();
        pressed_ = SpotAt(point);
        return true;
      case WM_LBUTTONUP:
      case WM_RBUTTONUP:
        Released(point, message == WM_RBUTTONUP ? MouseButton::kRight : MouseButton::kLeft);
        return true;
      case WM_KEYDOWN:
        return KeyDown(wide);
      case WM_CHAR:
        Pressed(static_cast<char32_t>(wide), RowStartingWith(static_cast<wchar_t>(wide)), false);
        return true;
      case WM_CONTEXTMENU:
        if (lParam == -1) OpenMenuByKey();
        return true;
      default:
        return false;
    }
  }

  void Released(const POINT& point, MouseButton button) {
    Settle();
    const Spot spot = SpotAt(point);
    const Spot pressed = std::exchange(pressed_, {});
    if (spot.row < 0) {
      On().queue([&list = list_, button] { list.UserReleaseButton(button); });
    } else if (spot == pressed && spot.onCheckBox && button == MouseButton::kLeft) {
      On().queue([&list = list_, spot] { list.UserClickCheckBox(spot.row); });
    } else if (spot == pressed) {
      On().queue([&list = list_, spot, button] { list.UserClickNode(spot.row, button); });
    }
  }

  // Keys that come as characters, too, are left to those.
  bool KeyDown(WPARAM key) {
    if (key == VK_DELETE) {
      Pressed(kDelete, -1, false);
      return true;
    }
    // The tree would mark the node by itself.
    if (key == VK_SPACE) return true;
    if (MapVirtualKeyW(static_cast<UINT>(key), MAPVK_VK_TO_CHAR) != 0) return false;
    Pressed(kBeyondCharacters | static_cast<char32_t>(key), RowBehind(key), IsStep(key));
    return key != VK_F4 && key != VK_MENU && key != VK_SHIFT && key != VK_CONTROL;
  }

  void Pressed(char32_t code, int row, bool step) {
    On().queue([&list = list_, code, row, step] {
      list.UserPressKey(code);
      // A list without check boxes takes a step on the spot for a click, so that its only node can be chosen.
      const bool onTheSpot = row == list.Selected() && (list.HasCheckBoxes() || !step);
      if (row >= 0 && !onTheSpot) list.UserClickNode(row);
    });
  }

  void OpenMenuByKey() {
    const int row = list_.Selected();
    if (row >= 0) On().queue([&list = list_, row] { list.UserClickNode(row, MouseButton::kRight); });
  }

  [[nodiscard]] int RowBehind(WPARAM key) const {
    const int last = list_.NodeCount() - 1;
    const int current = list_.Selected();
    const int page = std::max(static_cast<int>(SendMessageW(Handle(), TVM_GETVISIBLECOUNT, 0, 0)) - 1, 1);
    switch (key) {
      case VK_UP:
        return std::max(current - 1, std::min(0, last));
      case VK_DOWN:
        return std::min(current + 1, last);
      case VK_PRIOR:
        return std::max(current - page, std::min(0, last));
      case VK_NEXT:
        return std::min(current + page, last);
      case VK_HOME:
        return std::min(0, last);
      case VK_END:
        return last;
      default:
        return -1;
    }
  }

  // The next row behind the selected one that begins so, in any letter case; -1 when there is none.
  [[nodiscard]] int RowStartingWith(wchar_t character) const {
    const int count = list_.NodeCount();
    if (character <= L' ') return -1;
    for (int step = 1; step <= count; ++step) {
      const int row = (std::max(list_.Selected(), -1) + step + count) % count;
      const std::wstring text = OnOneLine(list_.NodeAt(row).text);
      if (!text.empty() && CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE, text.c_str(), 1, &character,
                                          1) == CSTR_EQUAL) {
        return row;
      }
    }
    return -1;
  }

  [[nodiscard]] Spot SpotAt(const POINT& point) const {
    TVHITTESTINFO hit{};
    hit.pt = point;
    const auto item =
        reinterpret_cast<HTREEITEM>(SendMessageW(Handle(), TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit)));
    if (item == nullptr || (hit.flags & TVHT_NOWHERE) != 0) return {};
    TVITEMW asked{};
    asked.mask = TVIF_PARAM | TVIF_HANDLE;
    asked.hItem = item;
    SendMessageW(Handle(), TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&asked));
    return {static_cast<int>(asked.lParam), (hit.flags & TVHT_ONITEMSTATEICON) != 0};
  }

  void SettleLater() {
    if (std::exchange(stale_, true)) return;
    PostMessageW(Handle(), kSettle, 0, 0);
    InvalidateRect(Handle(), nullptr, FALSE);
  }

  void MarkLater() {
    if (std::exchange(marksStale_, true)) return;
    PostMessageW(Handle(), kSettle, 0, 0);
    InvalidateRect(Handle(), nullptr, FALSE);
  }

  void Reload() {
    stale_ = marksStale_ = false;
    const int scrolled = FirstVisible();
    SendMessageW(Handle(), WM_SETREDRAW, FALSE, 0);
    following_ = true;
    SendMessageW(Handle(), TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    following_ = false;
    items_.clear();
    marks_.clear();
    PrepareImages();
    for (int node = 0; node < list_.NodeCount(); ++node)
      Insert(node);
    ShowSelection();
    if (scrolled > 0 && scrolled < list_.NodeCount()) {
      SendMessageW(Handle(), TVM_SELECTITEM, TVGN_FIRSTVISIBLE, reinterpret_cast<LPARAM>(Item(scrolled)));
    }
    SendMessageW(Handle(), WM_SETREDRAW, TRUE, 0);
    InvalidateRect(Handle(), nullptr, TRUE);
  }

  void Insert(int node) {
    const TreeList::Node& shown = list_.NodeAt(node);
    std::wstring text = OnOneLine(shown.text);
    TVINSERTSTRUCTW row{};
    row.hParent = TVI_ROOT;
    row.hInsertAfter = TVI_LAST;
    row.item.mask = TVIF_TEXT | TVIF_PARAM | TVIF_STATE | (images_ ? TVIF_IMAGE | TVIF_SELECTEDIMAGE : 0U);
    row.item.pszText = text.data();
    row.item.lParam = node;
    row.item.iImage = row.item.iSelectedImage = ImageOf(shown.imageKey);
    row.item.stateMask = list_.HasCheckBoxes() ? TVIS_STATEIMAGEMASK : 0U;
    row.item.state = list_.HasCheckBoxes() ? StateOf(shown.checked) : 0U;
    items_.push_back(reinterpret_cast<HTREEITEM>(
        SendMessageW(Handle(), TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&row))));
    marks_.push_back(shown.checked);
  }

  // Only what differs, since a run marks one node after the other. The tree draws once, not after each mark.
  void ShowMarks() {
    marksStale_ = false;
    if (!list_.HasCheckBoxes()) return;
    SendMessageW(Handle(), WM_SETREDRAW, FALSE, 0);
    for (std::size_t node = 0; node < items_.size(); ++node) {
      const bool checked = list_.NodeAt(static_cast<int>(node)).checked;
      if (marks_[node] != checked) ShowMark(node, checked);
    }
    SendMessageW(Handle(), WM_SETREDRAW, TRUE, 0);
    InvalidateRect(Handle(), nullptr, FALSE);
  }

  void ShowMark(std::size_t node, bool checked) {
    marks_[node] = checked;
    TVITEMW item{};
    item.mask = TVIF_STATE | TVIF_HANDLE;
    item.hItem = items_[node];
    item.stateMask = TVIS_STATEIMAGEMASK;
    item.state = StateOf(checked);
    SendMessageW(Handle(), TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
  }

  void ShowSelection() {
    if (stale_) return;
    const HTREEITEM item = Item(list_.Selected());
    following_ = true;
    SendMessageW(Handle(), TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(item));
    if (item != nullptr) SendMessageW(Handle(), TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(item));
    following_ = false;
  }

  // An empty list, or one without a selection, shows where the keyboard is by a frame.
  void DrawFocus() const {
    if (GetFocus() != Handle() || list_.Selected() >= 0) return;
    RECT area{};
    GetClientRect(Handle(), &area);
    const HDC device = GetDC(Handle());
    DrawFocusRect(device, &area);
    ReleaseDC(Handle(), device);
  }

  void PrepareImages() {
    const ImageList* images = list_.Images();
    if (images == nullptr || images_) return;
    const int side = On().units->Pixels(kIconSide);
    images_.reset(ImageList_Create(side, side, ILC_COLOR32 | ILC_MASK, 1, 8));
    positions_.clear();
    const std::vector<BYTE> black(static_cast<std::size_t>((side + 15) / 16 * 2 * side), 0xFF);
    const std::vector<BYTE> none(black.size(), 0);
    const IconHandle empty(CreateIcon(nullptr, side, side, 1, 1, black.data(), none.data()));
    ImageList_ReplaceIcon(images_.get(), -1, empty.get());
    SendMessageW(Handle(), TVM_SETIMAGELIST, TVSIL_NORMAL, reinterpret_cast<LPARAM>(images_.get()));
  }

  int ImageOf(const std::string& key) {
    if (!images_ || key.empty()) return kNoImage;
    const auto known = positions_.find(key);
    if (known != positions_.end()) return known->second;
    const ImageList::Image* image = list_.Images()->Find(key);
    if (image == nullptr) return kNoImage;
    const IconHandle icon = IconOf(image->file, On().units->Pixels(kIconSide));
    const int position = icon ? ImageList_ReplaceIcon(images_.get(), -1, icon.get()) : kNoImage;
    return positions_[key] = std::max(position, kNoImage);
  }

  [[nodiscard]] HTREEITEM Item(int node) const {
    const auto position = static_cast<std::size_t>(node);
    return node >= 0 && position < items_.size() ? items_[position] : nullptr;
  }

  [[nodiscard]] int FirstVisible() const {
    const LRESULT first = SendMessageW(Handle(), TVM_GETNEXTITEM, TVGN_FIRSTVISIBLE, 0);
    const auto found = std::find(items_.begin(), items_.end(), reinterpret_cast<HTREEITEM>(first));
    return found == items_.end() ? 0 : static_cast<int>(found - items_.begin());
  }

  TreeList& list_;
  std::vector<HTREEITEM> items_;
  std::vector<bool> marks_;  // as they are drawn
  ImageListHandle images_;
  std::unordered_map<std::string, int> positions_;
  Spot pressed_;
  LRESULT answer_ = 0;
  bool stale_ = false;
  bool marksStale_ = false;
  bool following_ = false;
};

}  // namespace

std::unique_ptr<ControlView> MakeTreeListView(TreeList& list, const Ground& ground) {
  return std::make_unique<TreeListView>(list, ground);
}

HTREEITEM ItemOfNode(HWND tree, int node) {
  LRESULT item = SendMessageW(tree, TVM_GETNEXTITEM, TVGN_ROOT, 0);
  for (; node > 0 && item != 0; --node)
    item = SendMessageW(tree, TVM_GETNEXTITEM, TVGN_NEXT, item);
  return reinterpret_cast<HTREEITEM>(item);
}

}  // namespace tessel::win32
