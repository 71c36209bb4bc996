// Groups of users, as lines ("family|anna|bob|") and as the tree that the user edits.
#pragma once

#include <string>
#include <vector>

namespace options {

struct Group {
  std::string name;
  std::vector<std::string> members;
  friend bool operator==(const Group&, const Group&) = default;
};

// The groups of the lines. Only what a bar closes counts, so a last member without one is lost.
std::vector<Group> GroupsOf(const std::vector<std::string>& lines);

// The lines of the groups, in order. A group without members is not kept.
std::vector<std::string> LinesOf(const std::vector<Group>& groups);

}  // namespace options
