// The language tables: every caption and message by its code, from the column of Lang.con that is named gLanguage.
#pragma once

#include <optional>
#include <string>

namespace core {

// Loads the texts of gLanguage; a language that is not in the file becomes "English". Throws the file's error,
// Err::TypeMismatch for a code that is no number, Err::SubscriptOutOfRange for a 202nd line or an 11th field, and
// Err::TypeMismatch, after a message box and a log line, when the file has no English either. On failure the texts of
// the last successful load stay.
void LoadLang();

// The text of a code; empty when the code is unknown. The first unknown code of a run is reported in a message box and
// in the log, and sets gLangError; later ones are not reported.
std::string GetText(int code);

// The text of an optional code; nothing, without a report, when the code is unknown.
std::optional<std::string> FindText(int code);

// Incremented by every load, so that cached texts can be refreshed.
unsigned LanguageGeneration();

// False once a code was missing: windows then keep the captions they have, the built-in English ones at first.
bool CaptionsFromTable();

// Loads the names and help texts of the three states into gStateNames and gStateHelps.
void LoadLangConsts();

}  // namespace core
