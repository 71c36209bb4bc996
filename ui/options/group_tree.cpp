#include "ui/options/group_tree.h"

#include "res/pictures.h"
#include "ui/toolkit/list_items.h"

namespace options {
namespace {

int PictureOf(NodeKind kind) {
  switch (kind) {
    case NodeKind::Group:
      return res::kRosterGroup;
    case NodeKind::User:
      return res::kRosterUser;
    default:
      return res::kRosterEverybody;
  }
}

}  // namespace

void GroupTree::Attach(HWND treeView, HIMAGELIST pictures) {
  hwnd_ = treeView;
  TreeView_SetImageList(hwnd_, pictures, TVSIL_NORMAL);
}

// Draws the selection as if the tree had the focus. While a name is typed it has not, and the system's pale colour
// would hardly show which group the name will be added to.
LRESULT GroupTree::OnNotify(NMHDR& header) const {
  if (header.hwndFrom != hwnd_ || header.code != NM_CUSTOMDRAW) return 0;
  auto& draw = reinterpret_cast<NMTVCUSTOMDRAW&>(header);
  if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
  if (draw.nmcd.dwDrawStage == CDDS_ITEMPREPAINT && (draw.nmcd.uItemState & CDIS_SELECTED)) {
    draw.clrText = ::GetSysColor(COLOR_HIGHLIGHTTEXT);
    draw.clrTextBk = ::GetSysColor(COLOR_HIGHLIGHT);
  }
  return CDRF_DODEFAULT;
}

HTREEITEM GroupTree::Insert(HTREEITEM parent, NodeKind kind, const std::string& text) {
  TVINSERTSTRUCTA insert{};
  insert.hParent = parent;
  insert.hInsertAfter = TVI_LAST;
  insert.item.mask = TVIF_TEXT | TVIF_PARAM | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
  insert.item.pszText = const_cast<char*>(text.c_str());  // the control copies it
  insert.item.lParam = static_cast<LPARAM>(kind);
  insert.item.iImage = insert.item.iSelectedImage = PictureOf(kind);
  return reinterpret_cast<HTREEITEM>(::SendMessageA(hwnd_, TVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&insert)));
}

void GroupTree::AddRoot() { root_ = Insert(TVI_ROOT, NodeKind::Root, ""); }

void GroupTree::SetRootText(const std::string& text) {
  TVITEMA item{};
  item.mask = TVIF_TEXT;
  item.hItem = root_;
  item.pszText = const_cast<char*>(text.c_str());
  ::SendMessageA(hwnd_, TVM_SETITEMA, 0, reinterpret_cast<LPARAM>(&item));
}

void GroupTree::Fill(const std::vector<Group>& groups) {
  while (const HTREEITEM first = FirstGroup()) TreeView_DeleteItem(hwnd_, first);
  for (const Group& group : groups) {
    const HTREEITEM node = Insert(root_, NodeKind::Group, group.name);
    for (const std::string& member : group.members) Insert(node, NodeKind::User, member);
    TreeView_Expand(hwnd_, node, TVE_EXPAND);
  }
  TreeView_Expand(hwnd_, root_, TVE_EXPAND);
}

std::vector<Group> GroupTree::Groups() const {
  std::vector<Group> groups;
  for (HTREEITEM node = FirstGroup(); node; node = TreeView_GetNextSibling(hwnd_, node)) {
    Group& group = groups.emplace_back(Group{TextOf(node), {}});
    for (HTREEITEM user = TreeView_GetChild(hwnd_, node); user; user = TreeView_GetNextSibling(hwnd_, user))
      group.members.push_back(TextOf(user));
  }
  return groups;
}

bool GroupTree::AddGroup(const std::string& name) {
  if (HasChild(root_, name)) return false;
  Select(Insert(root_, NodeKind::Group, name));
  return true;
}

bool GroupTree::AddMember(const std::string& name) {
  const HTREEITEM selected = Selected();
  HTREEITEM group = nullptr;
  if (SelectedKind() == NodeKind::Group) group = selected;
  if (SelectedKind() == NodeKind::User) group = TreeView_GetParent(hwnd_, selected);
  if (!group || HasChild(group, name)) return false;
  Select(Insert(group, NodeKind::User, name));
  return true;
}

NodeKind GroupTree::SelectedKind() const { return Selected() ? KindOf(Selected()) : NodeKind::None; }

std::string GroupTree::RemoveSelected() {
  const HTREEITEM selected = Selected();
  std::string text = TextOf(selected);
  TreeView_DeleteItem(hwnd_, selected);
  return text;
}

NodeKind GroupTree::KindOf(HTREEITEM node) const {
  TVITEMA item{};
  item.mask = TVIF_PARAM;
  item.hItem = node;
  ::SendMessageA(hwnd_, TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item));
  return static_cast<NodeKind>(item.lParam);
}

std::string GroupTree::TextOf(HTREEITEM node) const {
  return toolkit::ItemText([&](char* buffer, int size) {
    TVITEMA item{};
    item.mask = TVIF_TEXT;
    item.hItem = node;
    item.pszText = buffer;
    item.cchTextMax = size;
    ::SendMessageA(hwnd_, TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item));
  });
}

bool GroupTree::HasChild(HTREEITEM parent, const std::string& text) const {
  for (HTREEITEM node = TreeView_GetChild(hwnd_, parent); node; node = TreeView_GetNextSibling(hwnd_, node))
    if (TextOf(node) == text) return true;
  return false;
}

void GroupTree::Select(HTREEITEM item) {
  TreeView_EnsureVisible(hwnd_, item);
  TreeView_SelectItem(hwnd_, item);
}

}  // namespace options
