// Settings and run-time state, with the defaults of a first start. When reading the settings fails, those not read yet
// keep their defaults.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace core {

// Settings, kept in User.ini.
inline std::string gLanguage = "English";  // a column name of Lang.con
inline std::int16_t gAlertHeight = 0;      // distance of a popup at rest from the screen's edge, steps of 450 twips
inline std::string gUserName;              // the configured screen name; the logon name until settings say otherwise
inline std::int32_t gColour = 0;           // colour of the user's name, 0x00BBGGRR
inline std::int16_t gPopPos = 4;           // corner of new popups, 1 to 4
inline std::string gSound = "(B)";         // "(S)", "(B)" or a wave file's name
inline std::int16_t gRunAtLogon = 0;       // 1 = start at logon

// Position and size of the next chat window, in twips.
inline std::int32_t gChatLeft = 0, gChatTop = 0, gChatWidth = 0, gChatHeight = 0;

// State of this run.
inline std::string gVersion;         // "1.1.0"
inline std::int16_t gSafe = 0;       // 1 = system menus, no subclassing
inline std::int16_t gStarting = 0;   // -1 while start-up listens; the network is then joined without a greeting
inline std::int16_t gStatus = 0;     // presence: 0 takes chats and alerts, 1 alerts only, 2 nothing
inline bool gDispatching = false;    // a packet is being dispatched: nothing modal may begin
inline std::string gCurName;         // the name under which this copy sends
inline std::int16_t gLangCount = 0;  // index of the last language entry loaded
inline std::int16_t gLangError = 0;  // -1 once a missing text code was reported
inline std::int32_t gTicks = 0;      // set by StartTicks, milliseconds

// Names and help texts of the states 0, 1 and 2, from the language file; English until it is read.
inline std::array<std::string, 3> gStateNames{"Available", "Alerts Only", "Do Not Disturb"};
inline std::array<std::string, 3> gStateHelps{"Receive chat and alerts", "Receive alerts only", "Receive nothing"};

}  // namespace core
