// Conversion of groups of users between lines ("family|anna|bob|"), as they are stored, and a structure to edit.
#pragma once

#include <string>
#include <vector>

namespace options {

struct Group {
  std::string name;
  std::vector<std::string> members;
  friend bool operator==(const Group&, const Group&) = default;
};

// Parses lines. A bar terminates each name, so a last member without one is dropped.
std::vector<Group> GroupsOf(const std::vector<std::string>& lines);

// The lines of the groups, in order. Groups without members are left out.
std::vector<std::string> LinesOf(const std::vector<Group>& groups);

}  // namespace options
