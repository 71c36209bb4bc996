#include "ui/options/groups_page.h"

#include "core/sound.h"
#include "core/text.h"
#include "res/pictures.h"
#include "ui/toolkit/controls.h"
#include "ui/toolkit/pictures.h"

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

constexpr toolkit::Caption kLabel{2018, "Groups"};

constexpr toolkit::ToolButton kGroupButtons[] = {
    {kNewGroupButton, {2019, "&New"}, res::kToolbarNew},
    {kAddMemberButton, {2020, "&Add"}, res::kToolbarAdd},
    {kRemoveNodeButton, {2021, "&Remove"}, res::kToolbarRemove},
};

// A bar terminates a name in the stored line.
bool IsStorable(const std::string& name) { return core::Find(name, "|") == std::string::npos; }

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

void GroupsPage::CreateControls() {
  lblcapGroups = AddLabel(kLabel);
  txtGroups = AddTextBox(kGroupBox);
  AddButtons(tbGroups, kGroupButtons);
  AddName(kLabel);
  tvGroups.Attach(AddControl(WC_TREEVIEWA, "", GroupTree::kStyle, WS_EX_CLIENTEDGE),
                  toolkit::SharedPictures(res::Strip::Roster));
  cmdGroups = AddControl("BUTTON", "<Enter Detect>", 0, 0, kGroupEnter);
  ::ShowWindow(cmdGroups, SW_HIDE);
}

void GroupsPage::AddGroups() {
  tvGroups.AddRoot();
  AddCaption({2201, "Groups"}, [this](const std::string& text) { tvGroups.SetRootText(text); });
}

void GroupsPage::LayOut() { LayOutList(lblcapGroups, txtGroups, tbGroups, tvGroups.hwnd()); }

void GroupsPage::InputSets() { tvGroups.Fill(GroupsOf(users_.GroupLines())); }

void GroupsPage::WriteSets() {
  users_.SetGroupLines(LinesOf(tvGroups.Groups()));
  users_.RefGroups();
  users_.UpdateStat();  // no packet will do it when the network is out
}

std::span<const toolkit::Command> GroupsPage::Commands() const {
  static const toolkit::Command kCommands[] = {
      {kNewGroupButton, &GroupsPage::NewClick},
      {kAddMemberButton, &GroupsPage::AddClick},
      {kRemoveNodeButton, &GroupsPage::RemoveClick},
      {kGroupEnter, &GroupsPage::cmdGroups_Click},
  };
  return kCommands;
}

void GroupsPage::NewClick() {
  const std::string name = toolkit::TrimmedTextOf(txtGroups);
  EndEdit(name.empty() || (IsStorable(name) && tvGroups.AddGroup(name)));
}

void GroupsPage::AddClick() {
  const std::string name = toolkit::TrimmedTextOf(txtGroups);
  if (name.empty() && tvGroups.IsInGroup()) return EndEdit(true);
  EndEdit(IsStorable(name) && tvGroups.AddMember(name));
}

void GroupsPage::RemoveClick() {
  const bool removable = tvGroups.IsInGroup();
  if (removable) ::SetWindowTextA(txtGroups, tvGroups.RemoveSelected().c_str());
  EndEdit(removable);
}

void GroupsPage::cmdGroups_Click() { tvGroups.HasGroups() ? AddClick() : NewClick(); }

// Beeps when an edit was refused; the box gets the focus for the next one.
void GroupsPage::EndEdit(bool done) {
  if (!done) core::Beep();
  FocusAndSelect(txtGroups);
}

}  // namespace options
