// The language tables: every caption and message by its code, from the column of Lang.con that bears the name of
// gLanguage.
#pragma once

#include <optional>
#include <string>

namespace core {

// Reads the table of gLanguage; a language that the file lacks becomes "English". Throws what goes wrong: a missing
// file, a code that is no number (Err::TypeMismatch), a 202nd line or an 11th field (Err::SubscriptOutOfRange), and
// Err::TypeMismatch after a box and a log line when the file has no English either. A file that fails after another one
// was read leaves the texts of that one.
void LoadLang();

// The text of a code; empty when the code is unknown. The first unknown code of a run is reported in a box and in the
// log and sets gLangError; later ones are silent.
std::string GetText(int code);

// The text of a code that a language file need not have; none, and no report, when it lacks it.
std::optional<std::string> FindText(int code);

// Counts the loadings, so that whoever keeps a text knows when to ask for it again.
unsigned LanguageGeneration();

// True while windows may take their captions from the table: false once a code was missing, and the built-in English
// captions stay.
bool CaptionsFromTable();

// Loads the names and help texts of the three states into gStateNames and gStateHelps.
void LoadLangConsts();

}  // namespace core
