// The rows of a list: what a list view displays and everybody else reads. The list view holds no second copy, it asks
// for what it paints. Rows are only ever added at the end, so order is the order of adding. Finding a row by its exact
// text, by its text ignoring case or by its key does not walk the list, and neither do adding, changing and removing.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace toolkit {

// The members that change are ordered so that what a packet touches lies together in memory.
struct ListRow {
  std::string text{};
  std::string subText{};  // of the second column
  int icon = 0, smallIcon = 0;
  std::int32_t foreColour = 0;  // 0x00BBGGRR, or 0x800000nn for a system colour
  bool checked = false;
  bool selected = false;
  std::string key{};  // unique among keys, compared exactly; empty = none
};

// A row's own, for as long as the list stands; a row that was added later has a greater one.
using RowId = std::uint64_t;

class ListRows {
 public:
  ListRows();
  ~ListRows();
  ListRows(const ListRows&) = delete;
  ListRows& operator=(const ListRows&) = delete;

  // At the end. Throws core::Err::KeyNotUnique when a row has this key already. The reference holds until the row is
  // removed. A failure changes nothing.
  const ListRow& Add(ListRow row);
  void Remove(const ListRow& row);
  void Clear();

  // This row alone is left. A failure changes nothing: no list is without its everybody row because memory was short.
  const ListRow& ReplaceAll(ListRow row);

  std::size_t Count() const { return count_; }

  // Bytes of all texts and keys, for those who bound the list.
  std::size_t TextBytes() const { return textBytes_; }

  // Row number `index` (below Count()).
  const ListRow& At(std::size_t index) const;

  // For those who show rows that may have gone since: the ids of all rows in order, the row of an id or null, and the
  // number of that row, or of the one that follows its former place (Count() when none does).
  std::vector<RowId> Ids() const;
  const ListRow* FindId(RowId id) const;
  std::size_t PlaceOf(RowId id) const;

  // The first row in order, or null.
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

  // Counters for those who remember what they have drawn: of the set of rows (added or removed), and of real changes of
  // icon, colour or second column; of those the icons once more by themselves. Selecting counts as neither, since it is
  // the list view that selects.
  std::uint64_t MembershipRevision() const { return membershipRevision_; }
  std::uint64_t LookRevision() const { return lookRevision_; }
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

  // A removed row leaves a gap; gaps are closed together when somebody asks for a row number, or when they outgrow the
  // rows. Slots stand in the order of their ids, so the number of a row is a binary search.
  mutable std::vector<Slot> slots_;
  std::unique_ptr<Chains> byText_, byKey_;
  std::size_t count_ = 0, textBytes_ = 0, selectedCount_ = 0;
  RowId nextId_ = 0;
  std::uint64_t membershipRevision_ = 0, lookRevision_ = 0, iconRevision_ = 0;
};

}  // namespace toolkit
