// The command language: flags, values, strings, command substitution, if/else, comments, the
// stray blanks of the tool's command texts, and the errors of malformed text.

#include "commandTest.h"

using Items = std::vector<std::string>;

class LanguageTest : public CommandTest {};

TEST_F(LanguageTest, ShortAndLongFlagsReadTheSame)
{
    Items expected{"am=1", "d=2.5", "s=x y", "b=true", "u=7", "p=1,2,3", "obj=thing"};
    EXPECT_EQ(run("testArgs -am 1 -d 2.5 -s \"x y\" -b true -u 7 -p 1 2 3 thing").items, expected);
    EXPECT_EQ(run("testArgs -mergeAll 1 -distance 2.5 -string \"x y\" -bool on -unsigned 7 -point 1 2 3 thing").items,
              expected);
}

TEST_F(LanguageTest, NumbersKeepTheirSignAndExponent)
{
    EXPECT_EQ(run("testArgs -d -1.5e2 -p -1 .5 +2").items, (Items{"d=-150", "p=-1,0.5,2"}));
    // A dash before a digit is a value, never a flag.
    EXPECT_EQ(run("testArgs -am -3").items, Items{"am=-3"});
}

TEST_F(LanguageTest, StringsKeepBlanksAndEscapes)
{
    EXPECT_EQ(run("testArgs -s \"a \\\"quoted\\\" \\\\ word\\tend\"").items,
              Items{"s=a \"quoted\" \\ word\tend"});
    EXPECT_EQ(run("testArgs -s \"-am\"").items, Items{"s=-am"}) << "a quoted dash word is a value, not a flag";
    EXPECT_EQ(run("testArgs -s \"\"").items, Items{"s="});
}

TEST_F(LanguageTest, MultiUseFlagsKeepEveryUse)
{
    EXPECT_EQ(run("testArgs -m one -multi two -m three").items, Items{"m=one|two|three"});
}

// The tool sends texts with a blank between the dash and the flag name, leading blanks and
// two blanks before the semicolon; the flag is read as if the blank were not there.
TEST_F(LanguageTest, StrayBlanksOfTheToolTextsAreRead)
{
    EXPECT_EQ(run("testArgs -d 9999 - am 1 \"|t|shape.vtx[3]\" \"|t|shape.vtx[7]\"").items,
              (Items{"am=1", "d=9999", "obj=|t|shape.vtx[3]", "obj=|t|shape.vtx[7]"}));
    EXPECT_EQ(run(" testArgs -d 0.1 -u 30 - am 0 |t|shape.e[12]  ;").items,
              (Items{"am=0", "d=0.1", "u=30", "obj=|t|shape.e[12]"}));
    EXPECT_EQ(run("testArgs -am 1 -d 0.01 ").items, (Items{"am=1", "d=0.01"}));
    EXPECT_EQ(run("testArgs -am 2  ;  ;").items, Items{"am=2"});
}

TEST_F(LanguageTest, BackQuotesSubstituteTheResult)
{
    run("createNode transform -n t1; createNode transform -n t2; select -cl");
    EXPECT_EQ(run("testArgs -am `objExists t1` -s `objExists nothing`").items, (Items{"am=1", "s=0"}));
    // An array result gives one object per element.
    EXPECT_EQ(run("testArgs `ls -type transform t*`").items, (Items{"obj=t1", "obj=t2"}));
    EXPECT_EQ(run("testArgs -s `objExists \"x`y\"`").items, Items{"s=0"})
        << "a back quote inside a string does not end the substitution";
}

TEST_F(LanguageTest, IfRunsOneBranch)
{
    run("createNode transform -n a; createNode transform -n b -p a");
    // The tool's template for deleting a node that may be gone already.
    run("if (`objExists |a|b`) {delete |a|b; }");
    EXPECT_FALSE(exists("b"));
    EXPECT_TRUE(run("if (`objExists |a|b`) {delete |a|b; }").status) << "the false branch runs nothing";

    run("if (`objExists nothing`) createNode transform -n yes; else createNode transform -n no;");
    EXPECT_TRUE(exists("no"));
    EXPECT_FALSE(exists("yes"));

    run("if (!`objExists nothing` && 2 > 1 && (\"x\" == \"x\" || 0)) { createNode transform -n both; }");
    EXPECT_TRUE(exists("both"));
    run("if (`objExists a` != 1) createNode transform -n wrong; else if (1) createNode transform -n chained;");
    EXPECT_FALSE(exists("wrong"));
    EXPECT_TRUE(exists("chained"));
}

TEST_F(LanguageTest, CommentsAreSkipped)
{
    run("// a comment; createNode transform -n hidden\n"
        "createNode transform -n shown; /* createNode transform -n alsoHidden; */ createNode transform -n second");
    EXPECT_TRUE(exists("shown"));
    EXPECT_TRUE(exists("second"));
    EXPECT_FALSE(exists("hidden"));
    EXPECT_FALSE(exists("alsoHidden"));
}

TEST_F(LanguageTest, TheLastCommandGivesTheResult)
{
    EXPECT_EQ(run("createNode transform -n a; createNode transform -n b").text, "b");
    EXPECT_EQ(run("objExists a; objExists nothing").text, "0");
}

TEST_F(LanguageTest, UnknownCommandsFailAndNameTheCommand)
{
    std::string log = failing("createNode transform -n before; noSuchCommand 1 2; createNode transform -n after");
    EXPECT_NE(log.find("Unknown command 'noSuchCommand'"), std::string::npos) << log;
    EXPECT_TRUE(exists("before"));
    EXPECT_FALSE(exists("after")) << "the first failing statement ends the text";
}

TEST_F(LanguageTest, UnknownFlagsFailAndNameTheFlag)
{
    std::string log = failing("createNode transform -zz 1");
    EXPECT_NE(log.find("createNode: Invalid flag '-zz'"), std::string::npos) << log;
    log = failing("testSet -v 1 -zz");
    EXPECT_NE(log.find("testSet: Invalid flag '-zz'"), std::string::npos) << log;
    for (const std::string& line : pluginLines())
        EXPECT_NE(line.rfind("testSet.doIt", 0), 0u) << "doIt must not run on a bad invocation";
}

TEST_F(LanguageTest, FlagArgumentsAreChecked)
{
    EXPECT_NE(failing("testArgs -d").find("the flag '-d' needs 1 argument(s)"), std::string::npos);
    EXPECT_NE(failing("testArgs -d abc").find("expects a number, got 'abc'"), std::string::npos);
    EXPECT_NE(failing("testArgs -u -2").find("expects an unsigned integer"), std::string::npos);
    EXPECT_NE(failing("testArgs -b maybe").find("expects a boolean"), std::string::npos);
    EXPECT_NE(failing("testArgs -am 1 -am 2").find("can be used only once"), std::string::npos);
    EXPECT_NE(failing("testArgs a b c d").find("takes at most 3 object(s)"), std::string::npos);
}

TEST_F(LanguageTest, MalformedTextFailsWithThePlace)
{
    struct Case {
        const char* text;
        const char* message;
    };
    const Case cases[] = {
        {"createNode transform -n \"open", "line 1, column 30: a string is not closed"},
        {"testArgs -s `objExists x", "a command substitution is not closed"},
        {"createNode transform;\n}", "line 2, column 1: '}' without a matching '{'"},
        {"if (1) { createNode transform", "'{' without a matching '}'"},
        {"else createNode transform", "'else' without 'if'"},
        {"if 1 createNode transform", "'if' needs its condition in parentheses"},
        {"createNode $type", "variables ($name) are not supported"},
        {"createNode transform - ;", "'-' must be followed by a flag name or a number"},
        {"if (nothing) delete a", "unexpected 'nothing' in the condition"},
        {"ls(\"a\")", "is not supported"},
    };
    for (const Case& c : cases) {
        std::string log = failing(c.text);
        EXPECT_NE(log.find(c.message), std::string::npos) << c.text << "\n" << log;
    }
    EXPECT_TRUE(host::nodeNames("transform").empty()) << "a text that does not parse runs nothing";
}
