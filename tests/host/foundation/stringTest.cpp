#include <maya/MString.h>
#include <maya/MStringArray.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <sstream>
#include <string>

namespace {

std::string text(const MString& s) { return s.asChar(); }

std::string formatted(double value)
{
    MString s;
    s += value;
    return text(s);
}

TEST(StringTest, appendedNumbersFollowTheHostRule)
{
    const std::pair<double, const char*> cases[] = {
        {3.0, "3"},
        {2.5, "2.5"},
        {0.1, "0.1"},
        {-0.0, "0"},
        {-7.0, "-7"},
        {1.0 / 3.0, "0.33333333333333"},
        {123456789012345.0, "123456789012345"},
        {1e20, "100000000000000000000"},
        {-1.5e16, "-15000000000000000"},
        {123456789012345678.0, "123456789012350000"},
        {1e-5, "1e-05"},
        {std::numeric_limits<double>::infinity(), "inf"},
        {-std::numeric_limits<double>::infinity(), "-inf"},
        {std::numeric_limits<double>::quiet_NaN(), "nan"},
    };
    for (const auto& [value, expected] : cases)
        EXPECT_EQ(formatted(value), expected) << "value " << value;

    MString s("f=");
    s += 0.1f;
    EXPECT_EQ(text(s), "f=0.10000000149012");

    MString ints;
    ints += -12;
    ints += ' ';
    ints += 4000000000u;
    EXPECT_EQ(text(ints), "-12 4000000000");

    EXPECT_EQ(text(MString("x") + 2.0), "x2");
    MString assigned;
    assigned = 1.25;
    EXPECT_EQ(text(assigned), "1.25");
}

TEST(StringTest, setWithPrecisionUsesFixedDigits)
{
    MString s;
    s.set(3.14159, 2);
    EXPECT_EQ(text(s), "3.14");
    s.set(2.0, 0);
    EXPECT_EQ(text(s), "2");
    s.set(-0.001, 2);
    EXPECT_EQ(text(s), "0.00");
    s.set(1.5, -3);
    EXPECT_EQ(text(s), "2");
}

TEST(StringTest, bytesAndCharactersAreCountedSeparately)
{
    const MString s("h\xC3\xA9llo \xE2\x82\xAC");  // "héllo €"
    EXPECT_EQ(s.length(), 10u);
    EXPECT_EQ(s.numChars(), 7u);
    EXPECT_EQ(std::wstring(s.asWChar()), L"h\u00e9llo \u20ac");

    const MString fromWide(L"\u00e9t\u00e9");
    EXPECT_EQ(text(fromWide), "\xC3\xA9t\xC3\xA9");
    EXPECT_EQ(MString(L"abc", 2), MString("ab"));

    EXPECT_EQ(s.indexW(L'\u20ac'), 6);
    EXPECT_EQ(s.index('l'), 3);
    EXPECT_EQ(s.indexW('l'), 2);
    EXPECT_EQ(s.rindexW(MString("l")), 3);
    EXPECT_EQ(text(s.substringW(1, 1)), "\xC3\xA9");
    EXPECT_EQ(text(s.substring(1, 2)), "\xC3\xA9");
}

TEST(StringTest, malformedUtf8DecodesToReplacementCharacters)
{
    const MString s("a\xFF\xC3" "b\xE2\x82");
    EXPECT_EQ(std::wstring(s.asWChar()), L"a\uFFFD\uFFFDb\uFFFD\uFFFD");
    EXPECT_EQ(s.length(), 6u);
}

TEST(StringTest, wideCacheFollowsEdits)
{
    MString s("abc");
    EXPECT_EQ(s.numChars(), 3u);
    s += "\xC3\xA9";
    EXPECT_EQ(s.numChars(), 4u);
    s.toUpperCase();
    EXPECT_EQ(std::wstring(s.asWChar()), L"ABC\u00e9");
    s.clear();
    EXPECT_EQ(std::wstring(s.asWChar()), L"");
}

TEST(StringTest, substringClipsToTheString)
{
    const MString s("abcdef");
    EXPECT_EQ(text(s.substring(2, 4)), "cde");
    EXPECT_EQ(text(s.substring(-5, 1)), "ab");
    EXPECT_EQ(text(s.substring(4, 100)), "ef");
    EXPECT_EQ(text(s.substring(3, 2)), "");
    EXPECT_EQ(text(s.substring(10, 20)), "");
    EXPECT_EQ(text(s.substringW(5, 5)), "f");
    EXPECT_EQ(text(MString().substring(0, 0)), "");
}

TEST(StringTest, searchesReportMissingAsMinusOne)
{
    const MString s("a.b.c");
    EXPECT_EQ(s.index('.'), 1);
    EXPECT_EQ(s.rindex('.'), 3);
    EXPECT_EQ(s.index('x'), -1);
    EXPECT_EQ(s.indexW(MString("b.c")), 2);
    EXPECT_EQ(s.indexW(MString("zz")), -1);
    EXPECT_EQ(s.indexW(MString()), -1);
    EXPECT_EQ(s.indexW('\xC3'), -1);
}

TEST(StringTest, splitDropsEmptyPieces)
{
    MStringArray parts;
    parts.append("stale");
    MString("|grp||shape|").split('|', parts);
    ASSERT_EQ(parts.length(), 2u);
    EXPECT_EQ(parts[0], "grp");
    EXPECT_EQ(parts[1], "shape");

    MString("a\xE2\x82\xAC" "b\xE2\x82\xAC").split(L'\u20ac', parts);
    ASSERT_EQ(parts.length(), 2u);
    EXPECT_EQ(parts[1], "b");

    MString().split(',', parts);
    EXPECT_EQ(parts.length(), 0u);
}

TEST(StringTest, caseChangesOnlyTouchAsciiLetters)
{
    MString s("Mesh_01-\xC3\xA9");
    EXPECT_EQ(text(s.toUpperCase()), "MESH_01-\xC3\xA9");
    EXPECT_EQ(text(s.toLowerCase()), "mesh_01-\xC3\xA9");
}

TEST(StringTest, numericTestsAcceptWholeNumbersOnly)
{
    EXPECT_TRUE(MString("42").isInt());
    EXPECT_TRUE(MString("  -17 ").isInt());
    EXPECT_FALSE(MString("12abc").isInt());
    EXPECT_FALSE(MString("").isInt());
    EXPECT_FALSE(MString("-").isInt());
    EXPECT_FALSE(MString("3000000000").isInt());
    EXPECT_TRUE(MString("3000000000").isUnsigned());
    EXPECT_FALSE(MString("-1").isUnsigned());
    EXPECT_TRUE(MString("32767").isShort());
    EXPECT_FALSE(MString("32768").isShort());
    EXPECT_TRUE(MString("1.5e3").isDouble());
    EXPECT_TRUE(MString("+.5").isDouble());
    EXPECT_FALSE(MString("1.5.3").isDouble());
    EXPECT_FALSE(MString("nan").isDouble());
    EXPECT_FALSE(MString("1e400").isDouble());
    EXPECT_TRUE(MString("1e30").isFloat());
    EXPECT_FALSE(MString("1e300").isFloat());
}

TEST(StringTest, conversionsReadALeadingNumberAndSaturate)
{
    EXPECT_EQ(MString("12abc").asInt(), 12);
    EXPECT_EQ(MString("abc").asInt(), 0);
    EXPECT_EQ(MString("99999999999999999999999").asInt(), std::numeric_limits<int>::max());
    EXPECT_EQ(MString("-99999999999").asInt(), std::numeric_limits<int>::min());
    EXPECT_EQ(MString("-5").asUnsigned(), 0u);
    EXPECT_EQ(MString("70000").asShort(), 32767);
    EXPECT_DOUBLE_EQ(MString(" 2.5x").asDouble(), 2.5);
    EXPECT_DOUBLE_EQ(MString("1e-400").asDouble(), 0.0);
    EXPECT_EQ(MString("-1e400").asDouble(), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(MString("1e300").asFloat(), std::numeric_limits<float>::infinity());
    EXPECT_FLOAT_EQ(MString("0.25").asFloat(), 0.25f);
}

TEST(StringTest, formatReplacesNumberedPlaceholders)
{
    MString s;
    s.format("^2s/^1s (^3s) ^1s", "a", "b");
    EXPECT_EQ(text(s), "b/a (^3s) a");

    MStringArray args;
    for (const char* a : {"1", "2", "3", "4", "5", "6", "7", "8", "9", "ten"})
        args.append(a);
    s.format("^10s^1s ^^ ^x", args);
    EXPECT_EQ(text(s), "ten1 ^^ ^x");

    MString self("^1s!");
    self.format(self, "hi");
    EXPECT_EQ(text(self), "hi!");
}

TEST(StringTest, substituteReplacesOccurrences)
{
    MString s("a-b-c");
    EXPECT_EQ(s.substitute("-", "--"), MS::kSuccess);
    EXPECT_EQ(text(s), "a--b--c");
    EXPECT_EQ(s.substituteFirst("--", "+"), MS::kSuccess);
    EXPECT_EQ(text(s), "a+b--c");
    EXPECT_EQ(s.substitute("", "x"), MS::kInvalidParameter);
    EXPECT_EQ(text(s), "a+b--c");
}

TEST(StringTest, environmentVariablesAndTildeExpand)
{
    ::setenv("TQ_FOUNDATION_VAR", "value", 1);
    ::setenv("HOME", "/home/tester", 1);
    ::unsetenv("TQ_FOUNDATION_UNSET");
    MStatus status(MS::kFailure);
    const MString expanded =
        MString("~/$TQ_FOUNDATION_VAR/${TQ_FOUNDATION_VAR}x/$TQ_FOUNDATION_UNSET/${open")
            .expandEnvironmentVariablesAndTilde(&status);
    EXPECT_EQ(status, MS::kSuccess);
    EXPECT_EQ(text(expanded), "/home/tester/value/valuex/$TQ_FOUNDATION_UNSET/${open");
    EXPECT_EQ(text(MString("a~b").expandFilePath()), "a~b");
}

TEST(StringTest, comparisonsAndNullPointers)
{
    EXPECT_TRUE(MString("abc") == "abc");
    EXPECT_TRUE(MString("abc") != "abd");
    EXPECT_TRUE(MString("abc") < MString("abd"));
    EXPECT_TRUE(MString("b") > MString("abc"));
    EXPECT_TRUE(MString(static_cast<const char*>(nullptr)) == "");
    EXPECT_TRUE(MString() == static_cast<const char*>(nullptr));
    EXPECT_EQ(MString(static_cast<const char*>(nullptr), 5), MString());
    EXPECT_EQ(text("pre" + MString("fix")), "prefix");
    EXPECT_TRUE(MString().isEmpty());

    MString moved("payload");
    MString target(std::move(moved));
    EXPECT_EQ(text(target), "payload");

    std::ostringstream out;
    out << MString("streamed");
    EXPECT_EQ(out.str(), "streamed");
}

} // namespace
