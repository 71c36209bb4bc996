// A roster of plain lists, for tests that only pass one around.
#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "core/roster.h"
#include "core/text.h"

namespace support {

class FakeRoster : public core::Roster {
 public:
  std::vector<std::string> rows, blocked, groups;
  std::map<std::string, std::int32_t, std::less<>> colours;
  mutable int asked = 0;  // how often about a block
  std::string calls;  // what changed it, one letter each: B blocked, C cleared, F forgot the blocked, G groups rebuilt

  bool HasRow(std::string_view text) const override { return std::find(rows.begin(), rows.end(), text) != rows.end(); }
  int CountRows(std::string_view text) const override {
    return static_cast<int>(std::count_if(
        rows.begin(), rows.end(), [text](const std::string& row) { return core::EqualIgnoringCase(row, text); }));
  }
  bool AddUser(std::string_view name) override {
    rows.emplace_back(name);
    return true;
  }
  void SetColour(std::string_view, std::int32_t) override {}
  void SetStateText(std::string_view, std::string_view) override {}
  void RemoveRow(std::string_view) override {}
  std::int32_t GetColorForUName(std::string_view name) const override {
    const auto found = colours.find(name);
    return found == colours.end() ? 0 : found->second;
  }
  void ClearlvUsers() override {
    rows.clear();
    calls += 'C';
  }
  void RefGroups() override { calls += 'G'; }
  void RefBlock() override {}
  void UpdateStat() override {}
  bool IsBlocked(std::string_view name) const override {
    ++asked;
    return std::ranges::any_of(blocked, [name](auto& entry) { return core::EqualIgnoringCase(entry, name); });
  }
  void AddBlocked(std::string_view name) override {
    blocked.emplace_back(name);
    calls += 'B';
  }
  void RemoveBlock(std::string_view) override {}
  const std::vector<std::string>& BlockedNames() const override { return blocked; }
  void ClearBlockedNames() override {
    blocked.clear();
    calls += 'F';
  }
  const std::vector<std::string>& GroupLines() const override { return groups; }
  void SetGroupLines(std::vector<std::string> lines) override { groups = std::move(lines); }
};

}  // namespace support
