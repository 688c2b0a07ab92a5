#pragma once

#include <string>
#include <string_view>

/// A line of the text, changed word by word. Indentation, comments and everything else that is not
/// named stay. Lines are good ones of a timeline, without their line end; words count from 0,
/// columns from 0 in bytes.
namespace timeline
{
/// The words of a key's line.
inline constexpr size_t kTimeWord = 0, kValueWord = 1, kInterpolationWord = 2;

size_t CountWords(std::string_view line);
/// As it stands; empty when there are fewer.
std::string_view WordOf(std::string_view line, size_t index);
/// Where it begins; where the last word ends when there are fewer.
size_t ColumnOf(std::string_view line, size_t index);
std::string_view IndentOf(std::string_view line);

/// Puts `word` where word `index` stands. What follows keeps its column where there are two spaces
/// or more before it, or `isAligned` says that it stands below or above its like.
std::string ReplaceWord(std::string_view line, size_t index, std::string_view word, bool isAligned);

/// Puts `word` behind the last one, at `column` where that is free (0: anywhere), before any
/// comment.
std::string AppendWord(std::string_view line, std::string_view word, size_t column);

/// Takes word `index` out, with the spaces before it.
std::string RemoveWord(std::string_view line, size_t index);

/// The value of an option of a section's line or a repeat's ("at", "length" ...); empty: not there.
std::string_view OptionOf(std::string_view line, std::string_view name);
std::string SetOption(std::string_view line, std::string_view name, std::string_view value);
/// Nothing where it is not there.
std::string RemoveOption(std::string_view line, std::string_view name);
/// The line up to its last word.
std::string_view WithoutComment(std::string_view line);

/// A new line in the style of the key `like`: its indentation and its columns. `interpolation` may
/// be empty; where it is not, `like` must have one.
std::string MakeKeyLine(std::string_view like, bool isAligned, std::string_view time,
                        std::string_view value, std::string_view interpolation);
} // namespace timeline
