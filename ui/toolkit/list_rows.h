// The rows of a list: the data behind a virtual list view, shared with the rest of the program. Rows are only appended,
// so they are in the order of adding. Lookup by exact text, by text ignoring case or by key, adding, changing and
// removing take constant time.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace toolkit {

// Ordered so that the members which packets change are together in memory.
struct ListRow {
  std::string text{};
  std::string subText{};  // of the second column
  int icon = 0, smallIcon = 0;
  std::int32_t foreColour = 0;  // 0x00BBGGRR, or 0x800000nn for a system colour
  bool checked = false;
  bool selected = false;
  std::string key{};  // unique among keys, compared exactly; empty = none
};

// Unique in the lifetime of the list; rows added later have larger ids.
using RowId = std::uint64_t;

class ListRows {
 public:
  ListRows();
  ~ListRows();
  ListRows(const ListRows&) = delete;
  ListRows& operator=(const ListRows&) = delete;

  // Appends a row. Throws core::Err::KeyNotUnique when the key exists. The reference is valid until the row is removed.
  // Strong guarantee.
  const ListRow& Add(ListRow row);
  void Remove(const ListRow& row);
  void Clear();

  // Replaces all rows by this one. Strong guarantee: out of memory must not lose the (All) row.
  const ListRow& ReplaceAll(ListRow row);

  std::size_t Count() const { return count_; }

  // The total size of all texts and keys in bytes, for limits on memory.
  std::size_t TextBytes() const { return textBytes_; }

  // Row number `index` (below Count()).
  const ListRow& At(std::size_t index) const;

  // For views, whose rows may have been removed since: the ids of all rows in order; the row with an id, or null; and
  // the index of that row, or of the one after its former position (Count() when there is none).
  std::vector<RowId> Ids() const;
  const ListRow* FindId(RowId id) const;
  std::size_t IndexOf(RowId id) const;

  // The first match in order, or null.
  const ListRow* FindText(std::string_view text) const;
  const ListRow* FindTextIgnoringCase(std::string_view text) const;
  const ListRow* FindKey(std::string_view key) const;

  // Every row with this text ignoring case, in order.
  std::vector<const ListRow*> AllWithText(std::string_view text) const;

  void SetSubText(const ListRow& row, std::string_view text);
  void SetIcon(const ListRow& row, int icon);  // both sizes
  void SetForeColour(const ListRow& row, std::int32_t colour);
  void SetSelected(const ListRow& row, bool selected);

  std::size_t SelectedCount() const { return selectedCount_; }

  // The selected rows in order.
  std::vector<const ListRow*> Selected() const;

  // Change counters for views: of rows added or removed; of actual changes of icon, colour or second column; and of
  // icons alone. Selection does not count, since the list view itself selects.
  std::uint64_t MembershipRevision() const { return membershipRevision_; }
  std::uint64_t AppearanceRevision() const { return appearanceRevision_; }
  std::uint64_t IconRevision() const { return iconRevision_; }

 private:
  struct Link;
  struct TextLink;
  struct Row;
  struct Slot;
  class Chains;

  const ListRow& Enter(Row& added);
  Row& Own(const ListRow& row);
  void CloseGaps() const;

  // A removed row leaves a gap. Gaps are closed all at once, on the first access by index or when there are more gaps
  // than rows. Slots are sorted by id, so the index of a row is found by binary search.
  mutable std::vector<Slot> slots_;
  std::unique_ptr<Chains> byText_, byKey_;
  std::size_t count_ = 0, textBytes_ = 0, selectedCount_ = 0;
  RowId nextId_ = 0;
  std::uint64_t membershipRevision_ = 0, appearanceRevision_ = 0, iconRevision_ = 0;
};

}  // namespace toolkit
