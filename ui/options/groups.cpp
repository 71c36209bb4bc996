#include "ui/options/groups.h"

#include <algorithm>

#include "core/text.h"

namespace options {
namespace {

auto BarsIn(std::string_view line) { return std::ranges::count(line, '|'); }

}  // namespace

std::vector<Group> GroupsOf(const std::vector<std::string>& lines) {
  std::vector<Group> groups;
  for (const std::string& line : lines) {
    const auto closed = static_cast<std::size_t>(BarsIn(line));
    if (closed == 0) continue;
    Group& group = groups.emplace_back();
    group.name = core::BarField(line, 0);
    for (std::size_t i = 1; i < closed; ++i) group.members.emplace_back(core::BarField(line, i));
  }
  return groups;
}

std::vector<std::string> LinesOf(const std::vector<Group>& groups) {
  std::vector<std::string> lines;
  for (const Group& group : groups) {
    std::string line = group.name + '|';
    for (const std::string& member : group.members) line.append(member).append(1, '|');
    if (BarsIn(line) != 1) lines.push_back(std::move(line));
  }
  return lines;
}

}  // namespace options
