#include "ui/options/groups.h"

#include "core/text.h"

namespace options {
namespace {

std::size_t BarsIn(std::string_view line) {
  std::size_t bars = 0;
  for (std::size_t bar = core::Find(line, "|"); bar != std::string_view::npos; bar = core::Find(line, "|", bar + 1))
    ++bars;
  return bars;
}

}  // namespace

std::vector<Group> GroupsOf(const std::vector<std::string>& lines) {
  std::vector<Group> groups;
  for (const std::string& line : lines) {
    const std::size_t closed = BarsIn(line);
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
