#include <gtest/gtest.h>

#include <clocale>
#include <cmath>

#include "core/Runtime.h"

namespace orv {
namespace {

TEST(Val, TakesTheLongestLeadingNumber) {
  EXPECT_EQ(Val("42"), 42);
  EXPECT_EQ(Val("  -12.5abc"), -12.5);
  EXPECT_EQ(Val("3.25.7"), 3.25);
  EXPECT_EQ(Val(".5"), 0.5);
  EXPECT_EQ(Val("1E3x"), 1000);
  EXPECT_EQ(Val("2D2"), 200);
  EXPECT_EQ(Val("7E"), 7);      // an exponent without digits is not part of the number
  EXPECT_EQ(Val("7e+"), 7);
  EXPECT_EQ(Val("abc"), 0);
  EXPECT_EQ(Val(""), 0);
  EXPECT_EQ(Val("-"), 0);
  EXPECT_EQ(Val("-."), 0);
  EXPECT_EQ(Val("+8"), 8);
  EXPECT_EQ(Val("1e999"), 0);   // overflow gives no number rather than infinity
  EXPECT_EQ(Val("0x1F"), 0);
}

TEST(Text, SameTextNoCaseFoldsAsciiLettersOnly) {
  EXPECT_TRUE(SameTextNoCase("MenuVOR", "menuvor"));
  EXPECT_TRUE(SameTextNoCase("", ""));
  EXPECT_FALSE(SameTextNoCase("VOR", "VOR "));
  EXPECT_FALSE(SameTextNoCase("\xC9", "\xE9"));  // E acute in two cases: not a letter here
  EXPECT_FALSE(SameTextNoCase("[", "{"));
}

TEST(Rounding, CIntAndCLngRoundHalfToEven) {
  EXPECT_EQ(CInt(0.5), 0);
  EXPECT_EQ(CInt(1.5), 2);
  EXPECT_EQ(CInt(2.5), 2);
  EXPECT_EQ(CInt(-2.5), -2);
  EXPECT_EQ(CInt(-3.5), -4);
  EXPECT_EQ(CInt(2.5000001), 3);
  EXPECT_EQ(CLng(123456.5), 123456);
  EXPECT_EQ(CLng(123457.5), 123458);
  EXPECT_EQ(CInt(40000.0), 32767);  // saturates instead of raising
  EXPECT_EQ(CInt(-40000.0), -32768);
  EXPECT_EQ(CLng(NAN), 0);
  EXPECT_EQ(CByte(254.5), 254);
  EXPECT_EQ(CByte(300), 255);
  EXPECT_EQ(RoundHalfUp(2.5f), 3);
  EXPECT_EQ(RoundHalfUp(-2.5f), -2);
  EXPECT_EQ(CSng(0.1), 0.1f);
}

TEST(Format, ZeroPadsAndRounds) {
  EXPECT_EQ(Format(7, "00"), "07");
  EXPECT_EQ(Format(7, "000"), "007");
  EXPECT_EQ(Format(1234, "00"), "1234");  // more digits than the mask are all shown
  EXPECT_EQ(Format(5.5, "0"), "6");       // formatting rounds half away from zero
  EXPECT_EQ(Format(6.5, "0"), "7");
  EXPECT_EQ(Format(-2.5, "0"), "-3");
  EXPECT_EQ(Format(3.14159, "00.00"), "03.14");
  EXPECT_EQ(Format(59.999, "00.00"), "60.00");
  EXPECT_EQ(Format(1.005, "0.00"), "1.01");   // decimal rounding of the shown value
  EXPECT_EQ(Format(2.675, "00.00"), "02.68");
  EXPECT_EQ(Format(12.3456, "000.000"), "012.346");
  EXPECT_EQ(Format(123.456, "000000.00"), "000123.46");
  EXPECT_EQ(Format(42, "00000"), "00042");
  EXPECT_EQ(Format(42, "0000"), "0042");
}

TEST(Format, HashPlaceholdersDropWhatIsNotSignificant) {
  EXPECT_EQ(Format(0.5, "##0.0"), "0.5");
  EXPECT_EQ(Format(123.45, "##0.0"), "123.5");
  EXPECT_EQ(Format(12345.44, "###0.0"), "12345.4");
  EXPECT_EQ(Format(3.456, "###0.00"), "3.46");
  EXPECT_EQ(Format(5, "#000"), "005");
  EXPECT_EQ(Format(12345, "#000"), "12345");
  EXPECT_EQ(Format(42, "####"), "42");
  EXPECT_EQ(Format(0, "####"), "");
  EXPECT_EQ(Format(0, "###"), "");
  EXPECT_EQ(Format(0.5, "###.00"), ".50");
  EXPECT_EQ(Format(12.3, "###.00"), "12.30");
  EXPECT_EQ(Format(1.23456, "##0.0000"), "1.2346");
  EXPECT_EQ(Format(51.5, "#0.0000"), "51.5000");
  EXPECT_EQ(Format(8.25, "##0.000"), "8.250");
  EXPECT_EQ(Format(50.12345678, "##.000000"), "50.123457");
  EXPECT_EQ(Format(-8.5, "###.000000"), "-8.500000");
  EXPECT_EQ(Format(1.5, "#.##"), "1.5");
  EXPECT_EQ(Format(2, "#.##"), "2.");
}

TEST(Format, SignsGroupsSectionsAndLiterals) {
  EXPECT_EQ(Format(-0.001, "0.00"), "0.00");  // no minus on a value that shows as zero
  EXPECT_EQ(Format(-5, "#000"), "-005");
  EXPECT_EQ(Format(1234567, "#,##0"), "1,234,567");
  EXPECT_EQ(Format(12, "#,##0"), "12");
  EXPECT_EQ(Format(-3, "0;(0)"), "(3)");
  EXPECT_EQ(Format(0, "0;(0);\"zero\""), "zero");
  EXPECT_EQ(Format(5, "0\" nm\""), "5 nm");
  EXPECT_EQ(Format(7.5, "00\\°"), "08°");
}

TEST(Format, DigitsComeFromFifteenSignificantOnesAtAnyMagnitude) {
  EXPECT_EQ(Format(1e-20, "0.00"), "0.00");
  EXPECT_EQ(Format(0.000123456789012345, "0.000000"), "0.000123");
  EXPECT_EQ(Format(9.99999999999999e-5, "0.0000"), "0.0001");
  EXPECT_EQ(Format(123456789012345.6, "0"), "123456789012346");
  EXPECT_EQ(Format(0.1 + 0.2, "0.0000000000000000"), "0.3000000000000000");  // 15 digits, not 17
  EXPECT_EQ(Format(1e20, "0"), "100000000000000000000");
  EXPECT_EQ(Format(5e-324, "0.0"), "0.0");
}

TEST(Format, DecimalPointIgnoresTheLocale) {
  const char* old = std::setlocale(LC_NUMERIC, nullptr);
  std::string saved = old ? old : "C";
  if (std::setlocale(LC_NUMERIC, "de_DE.UTF-8") || std::setlocale(LC_NUMERIC, "de_DE")) {
    EXPECT_EQ(Format(1.5, "0.00"), "1.50");
    EXPECT_EQ(Val("1.5"), 1.5);
  }
  std::setlocale(LC_NUMERIC, saved.c_str());
  EXPECT_EQ(NumText(0.5), "0.5");
  EXPECT_EQ(NumText(-12.25), "-12.25");
  EXPECT_EQ(NumText(0.1 + 0.2), "0.3");
  EXPECT_EQ(NumText(1e20), "1E+20");
  EXPECT_EQ(NumText(0.1f), "0.1");
  EXPECT_EQ(NumText(3.0), "3");
}

TEST(Text, OneBasedPositions) {
  EXPECT_EQ(InStr("KJFK", "F"), 3);
  EXPECT_EQ(InStr("KJFK", "K", 2), 4);
  EXPECT_EQ(InStr("KJFK", "X"), 0);
  EXPECT_EQ(InStr("abc", "", 2), 2);
  EXPECT_EQ(InStr("abc", "a", 9), 0);
  EXPECT_EQ(InStrRev("a.b.c", "."), 4);
  EXPECT_EQ(Mid("ORVANTA", 2, 3), "RVA");
  EXPECT_EQ(Mid("ORVANTA", 5), "NTA");
  EXPECT_EQ(Mid("ORV", 9, 2), "");
  EXPECT_EQ(Mid("ORV", 0, 2), "OR");
  EXPECT_EQ(Left("ORV", 2), "OR");
  EXPECT_EQ(Left("ORV", 9), "ORV");
  EXPECT_EQ(Left("ORV", -1), "");
  EXPECT_EQ(Right("ORV", 2), "RV");
  EXPECT_EQ(Right("ORV", 9), "ORV");
}

TEST(Text, TrimCaseAndFixedWidths) {
  EXPECT_EQ(Trim("  EDDF \t "), "EDDF \t");  // the runtime trims blanks only
  EXPECT_EQ(Trim("   "), "");
  EXPECT_EQ(TrimView(std::string_view(" \0A B  ", 7)), std::string_view("\0A B", 4));  // NUL is no blank
  EXPECT_EQ(TrimView("   "), "");
  EXPECT_EQ(TrimView("X"), "X");
  EXPECT_EQ(LTrim("  a "), "a ");
  EXPECT_EQ(RTrim("  a "), "  a");
  EXPECT_EQ(UCase("eddf-1ä"), "EDDF-1ä");
  EXPECT_EQ(LCase("EDDF"), "eddf");
  EXPECT_EQ(ProperCase("FRANKFURT MAIN  airport"), "Frankfurt Main  Airport");
  EXPECT_EQ(ProperCase("o'HARE"), "O'hare");
  EXPECT_EQ(FixedText("ABC", 5), "ABC  ");
  EXPECT_EQ(FixedText("ABCDEFG", 4), "ABCD");
  const char field[6] = {'E', 'D', ' ', ' ', '\0', 'X'};
  EXPECT_EQ(FieldText(field, 6), "ED");
  const char full[4] = {'K', 'J', 'F', 'K'};
  EXPECT_EQ(FieldText(full, 4), "KJFK");
  EXPECT_EQ(Fill(3, '-'), "---");
}

TEST(Text, ReplaceEveryOccurrenceWithoutRescanning) {
  EXPECT_EQ(Replace("http://a.b/common/nat.html", "/common/nat.html", "/trackmain.html"), "http://a.b/trackmain.html");
  EXPECT_EQ(Replace("aXbXc", "X", "--"), "a--b--c");
  EXPECT_EQ(Replace("aaa", "a", "aa"), "aaaaaa");  // the inserted text is not searched again
  EXPECT_EQ(Replace("aaaa", "aa", "b"), "bb");
  EXPECT_EQ(Replace("Nat", "nat", "x"), "Nat");    // binary compare: case matters
  EXPECT_EQ(Replace("abc", "", "x"), "abc");
  EXPECT_EQ(Replace("", "a", "b"), "");
}

TEST(Text, CodePageRoundTrip) {
  std::string latin = "M\xFCnchen \x80";
  EXPECT_EQ(Latin1ToUtf8(latin), "M\xC3\xBCnchen \xE2\x82\xAC");
  EXPECT_EQ(Utf8ToLatin1(Latin1ToUtf8(latin)), latin);
  EXPECT_EQ(Utf8ToLatin1("\xE4\xB8\xAD"), "?");  // outside the code page
}

}  // namespace
}  // namespace orv
