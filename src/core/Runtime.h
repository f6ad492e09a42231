// The runtime semantics every module shares: tolerant number parsing, banker's
// rounding into 16- and 32-bit integers, single-precision steps, format masks,
// 1-based text helpers and fixed-width blank-padded texts. Numbers always use
// "." as the decimal point, whatever the locale.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace orv {

// Longest leading number of the text (after leading blanks and tabs), else 0.
// Accepts a sign, digits, one decimal point and an exponent (E or D).
double Val(std::string_view text);

// Rounds half to even. Values outside the integer's range saturate rather than
// raise, so that a hostile file cannot stop the program.
int16_t CInt(double value);
int32_t CLng(double value);
// Rounds half to even into a byte (0..255), saturating.
uint8_t CByte(double value);

// A 32-bit float step: the value as a single-precision variable would hold it.
inline float CSng(double value) { return static_cast<float>(value); }

// Floor of value + 0.5 on a single-precision value.
int32_t RoundHalfUp(float value);

// Formats a number with a runtime format mask: "0" digit or zero pad, "#" digit
// or nothing, "." decimal point, "," thousands grouping; other characters are
// literals. Rounds half away from zero on the decimal value, as the runtime
// does. A negative value carries a leading "-" unless it rounds to zero.
std::string Format(double value, std::string_view mask);

// The plain text form of a number: shortest round-trip digits, "." as decimal
// point, no leading blank (CStr semantics). Single-precision values use their
// 7-digit form.
std::string NumText(double value);
std::string NumText(float value);

// 1-based text helpers. Positions count from 1; 0 means "not found".
int InStr(std::string_view text, std::string_view find, int start = 1);
int InStrRev(std::string_view text, std::string_view find);
std::string Left(std::string_view text, int count);
std::string Right(std::string_view text, int count);
// Mid from position start (1-based), count characters, or to the end when count < 0.
std::string Mid(std::string_view text, int start, int count = -1);
std::string Trim(std::string_view text);   // blanks only, as the runtime trims
// Trim without a copy: the part of text between its leading and trailing blanks.
std::string_view TrimView(std::string_view text);
std::string LTrim(std::string_view text);
std::string RTrim(std::string_view text);
std::string UCase(std::string_view text);
// True when a and b are the same text but for the case of their letters (A to
// Z; other characters must match exactly). Names of files, fonts, layers and
// codes compare this way.
bool SameTextNoCase(std::string_view a, std::string_view b);
std::string LCase(std::string_view text);
// Proper case: first letter of each word upper, the rest lower.
std::string ProperCase(std::string_view text);
// A text of count copies of ch.
std::string Fill(int count, char ch = ' ');
// Every occurrence of find replaced by with, left to right, without rescanning
// the replaced text (the runtime's Replace with a binary compare). An empty
// find leaves the text as it is.
std::string Replace(std::string_view text, std::string_view find, std::string_view with);

// Fixed-width 8-bit text: blank-padded or cut to width.
std::string FixedText(std::string_view text, std::size_t width);
// A fixed field as read from a file: cut at the first NUL, trailing blanks removed.
std::string FieldText(const char* data, std::size_t width);

// 8-bit (Windows-1252) text to UTF-8 and back, for display and for names typed
// by the user. Characters outside the code page become "?".
std::string Latin1ToUtf8(std::string_view text);
std::string Utf8ToLatin1(std::string_view text);

}  // namespace orv
