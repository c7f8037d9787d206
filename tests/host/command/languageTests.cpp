// The command language: flags, values, strings, command substitution, if/else, comments, the
// stray blanks of the tool's command texts, procedures, variables and loops, scripts on the
// script path, and the errors of malformed text.

#include "commandTest.h"

#include <filesystem>
#include <fstream>

#include <unistd.h>

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
        {"createNode transform -n $", "a variable name is expected after '$'"},
        {"createNode transform - ;", "'-' must be followed by a flag name or a number"},
        {"if (nothing) delete a", "unexpected 'nothing' in the expression"},
        {"proc f( { }", "a parameter type (int, float or string) is expected"},
        {"int $a = ;", "unexpected ';' in the expression"},
    };
    for (const Case& c : cases) {
        std::string log = failing(c.text);
        EXPECT_NE(log.find(c.message), std::string::npos) << c.text << "\n" << log;
    }
    EXPECT_TRUE(host::nodeNames("transform").empty()) << "a text that does not parse runs nothing";
}

TEST_F(LanguageTest, ProceduresTakeTypedArgumentsAndReturnValues)
{
    run("global proc string join(string $parts[], string $sep) {"
        "    string $out = \"\";"
        "    for ($i = 0; $i < size($parts); $i++) { if ($i > 0) $out += $sep; $out = $out + $parts[$i]; }"
        "    return $out;"
        "}"
        "global proc int half(int $n) { return $n / 2; }");
    EXPECT_EQ(run("string $a[] = {\"x\", \"y\", \"z\"}; join($a, \"-\")").text, "x-y-z");
    EXPECT_EQ(run("half 7").text, "3") << "integers divide as integers";
    EXPECT_EQ(run("float $f = 7; $f / 2").text, "3.5");
    EXPECT_EQ(run("string $s = \"n\" + 1.5 + (2 * 3); $s").text, "n1.56");
    EXPECT_EQ(run("int $k = 4; ($k > 3) ? \"big\" : `createNode transform -n neverMade`").text, "big");
    EXPECT_FALSE(exists("neverMade")) << "only the branch taken runs";
    EXPECT_NE(failing("half 1 2").find("takes 1 argument(s), 2 given"), std::string::npos);
    // Runaway recursion and endless operator chains end with an error, not a crash.
    run("global proc int forever(int $n) { return forever($n + 1); }");
    EXPECT_NE(failing("forever 0").find("procedures nest more than 100 calls deep"), std::string::npos);
    std::string chain = "1";
    for (int i = 0; i < 1100; ++i)
        chain += " + 1";
    EXPECT_NE(failing("int $x = " + chain).find("nests deeper than 1024 operators"), std::string::npos);
}

TEST_F(LanguageTest, LoopsAndArraysWorkOnSceneNames)
{
    run("createNode transform -n a1; createNode transform -n a2; createNode transform -n b1");
    EXPECT_EQ(run("string $names[] = `ls -type transform \"a*\"`; string $all;"
                  "for ($n in $names) $all += $n + \",\"; $all")
                  .text,
              "a1,a2,");
    EXPECT_EQ(run("int $k = 0; int $sum = 0; while (1) { $k++; if ($k > 10) break; if ($k % 2) continue; $sum += $k; } $sum")
                  .text,
              "30");
    EXPECT_EQ(run("int $v[]; $v[3] = 4; size($v)").text, "4") << "an array grows to the index written";
    EXPECT_EQ(run("global int $counter; $counter = 5; global proc int readCounter() { global int $counter; return $counter; }"
                  "readCounter()")
                  .text,
              "5");
    EXPECT_NE(failing("$undeclared + 1").find("$undeclared is an undeclared variable"), std::string::npos);
    EXPECT_NE(failing("proc local1() { int $x = 1; } local1; $x").find("$x is an undeclared variable"),
              std::string::npos)
        << "a procedure's variables are its own";
}

class ScriptFileTest : public LanguageTest {
protected:
    void SetUp() override
    {
        LanguageTest::SetUp();
        dir = std::filesystem::temp_directory_path() / ("melScripts" + std::to_string(::getpid()));
        std::filesystem::create_directories(dir);
        host::addScriptDirectory(dir.string());
    }
    void TearDown() override
    {
        std::filesystem::remove_all(dir);
        LanguageTest::TearDown();
    }
    void write(const std::string& name, const std::string& text)
    {
        std::ofstream(dir / name) << text;
    }
    std::filesystem::path dir;
};

TEST_F(ScriptFileTest, ScriptsAreSourcedFromTheScriptPath)
{
    write("melShapes.mel", "proc string stem() { return \"made\"; }\n"
                           "global proc string melShapes(int $n) {\n"
                           "    string $made[];\n"
                           "    for ($i = 0; $i < $n; ++$i) $made[$i] = `createNode transform -n (stem() + $i)`;\n"
                           "    return $made[$n - 1];\n"
                           "}\n");
    // An unknown name sources the script named after it, then runs its procedure.
    EXPECT_EQ(run("melShapes 3").text, "made2");
    EXPECT_EQ(run("exists melShapes").text, "1");
    EXPECT_NE(failing("stem").find("Unknown command 'stem'"), std::string::npos)
        << "a local procedure is seen only by its own script";
    write("melSourced.mel", "global proc int melSourced() { return 7; }");
    EXPECT_EQ(run("source melSourced.mel; melSourced()").text, "7");
    EXPECT_NE(failing("source noSuchScript").find("cannot find the script noSuchScript"), std::string::npos);
}

TEST_F(ScriptFileTest, ErrorsNameTheScriptAndLine)
{
    const std::string broken = (dir / "melBroken.mel").string();
    write("melBroken.mel", "global proc melBroken() {\n"
                           "    createNode transform -n ok;\n"
                           "    setAttr nothing.tx 1;\n"
                           "}\n");
    std::string log = failing("melBroken");
    EXPECT_NE(log.find(broken + " line 3:"), std::string::npos) << log;
    write("melSyntax.mel", "global proc melSyntax() {\n    int $a = (1 + ;\n}\n");
    log = failing("source melSyntax.mel");
    EXPECT_NE(log.find("Syntax error in " + (dir / "melSyntax.mel").string() + ", line 2"), std::string::npos) << log;
    write("melRuntime.mel", "int $a[];\nint $b = $a;\n");
    log = failing("source melRuntime.mel");
    EXPECT_NE(log.find("melRuntime.mel line 2: an array cannot be assigned"), std::string::npos) << log;
}
