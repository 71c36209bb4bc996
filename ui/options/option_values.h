// The rules of the options: validation and conversion of names, groups and sounds, and how accepted ones take effect.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/program.h"
#include "core/roster.h"

namespace options {

// Codes of the messages that refuse a screen name.
inline constexpr int kNameInUseText = 2204, kNameUnusableText = 2205;

// Checks a trimmed screen name. It must not be in use, must contain a letter A-Z or a digit, so that it can be
// displayed and typed everywhere, and must not contain a vertical bar, which separates the fields of a packet. The
// user's own row does not count as a use of the name, unless the present name belongs to another user
// (`ownNameIsTaken`, the conflict at start-up). Returns the code of the message, 0 when the name is valid.
int RefusalOf(std::string_view name, const core::Roster& users, bool ownNameIsTaken);

// The first character in upper case, the rest in lower case: "jOHN smITH" becomes "John smith".
std::string ProperCase(std::string_view name);

// Groups of users, which are stored as lines ("family|anna|bob|").
struct Group {
  std::string name;
  std::vector<std::string> members;
  friend bool operator==(const Group&, const Group&) = default;
};

// Parses lines. A bar terminates each name, so a last member without one is dropped.
std::vector<Group> GroupsOf(const std::vector<std::string>& lines);

// The lines of the groups, in order. Groups without members are left out.
std::vector<std::string> LinesOf(const std::vector<Group>& groups);

// The sounds offered for a new message.
struct Sound {
  std::string key;   // as it is stored and played: "(S)", "(B)", or a file name that ends in ".wav"
  std::string text;  // as it is listed; empty for silence and beep
  friend bool operator==(const Sound&, const Sound&) = default;
};

// Silence and beep, whose texts depend on the language, then the wave files of the program's folder.
std::vector<Sound> SoundsOf(const std::vector<std::string>& files);

// The key of a file: its name, with ".wav" appended unless it ends in exactly that; case counts.
std::string SoundKey(std::string_view file);

// Write the accepted settings into the globals and the roster.
struct SetsWriters {
  std::function<void()> language;
  std::function<void()> user;  // name and colour
  std::function<void()> others;
};

// Leaves the network under the old name, clears the list of users, joins under the new name, and saves everything. A
// failure to join is reported in a message box, and the rest is still done. Throws the file's error when the settings
// cannot be saved; they are in effect then.
void ApplySets(core::Program& program, const SetsWriters& write);

}  // namespace options
