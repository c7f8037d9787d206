// MArgList, MSyntax, MArgParser and MArgDatabase used directly, as a plug-in's doIt uses them.

#include "commandTest.h"

#include <maya/MArgDatabase.h>
#include <maya/MArgList.h>
#include <maya/MCommandResult.h>
#include <maya/MStringArray.h>
#include <maya/MSyntax.h>
#include <maya/MVector.h>

class ArgumentTest : public hosttest::SceneTest {};

TEST_F(ArgumentTest, ArgListReadsBackWhatWasAdded)
{
    MArgList list;
    list.addArg(true);
    list.addArg(7);
    list.addArg(2.5);
    list.addArg(MString("word"));
    list.addArg(MString("-flag"));
    list.addArg(MVector(1.0, 2.0, -3.0));
    ASSERT_EQ(list.length(), 8u);
    EXPECT_TRUE(list.asBool(0));
    EXPECT_EQ(list.asInt(1), 7);
    EXPECT_EQ(list.asDouble(2), 2.5);
    EXPECT_EQ(hosttest::str(list.asString(3)), "word");
    EXPECT_EQ(list.flagIndex("-flag"), 4u);
    EXPECT_EQ(list.flagIndex("f", "flag"), 4u);
    EXPECT_EQ(list.flagIndex("-word"), MArgList::kInvalidArgIndex) << "a plain string is not a flag";

    unsigned int index = 5;
    MStatus status;
    MVector v = list.asVector(index, 3, &status);
    ASSERT_TRUE(status);
    EXPECT_EQ(v, MVector(1.0, 2.0, -3.0));
    EXPECT_EQ(index, 8u) << "the index moves past what was read";

    list.asInt(3, &status);
    EXPECT_FALSE(status) << "a word is no integer";
    list.asDouble(100, &status);
    EXPECT_FALSE(status) << "past the end";
    index = 6;
    list.asVector(index, 3, &status);
    EXPECT_FALSE(status);
    EXPECT_EQ(index, 6u) << "a failed read leaves the index";
}

TEST_F(ArgumentTest, SyntaxRefusesClashesAndBadDefinitions)
{
    MSyntax syntax;
    EXPECT_TRUE(syntax.addFlag("-a", "-alpha", MSyntax::kDouble));
    EXPECT_FALSE(syntax.addFlag("-a", "-another"));
    EXPECT_FALSE(syntax.addFlag("-b", "-alpha"));
    EXPECT_FALSE(syntax.makeFlagMultiUse("-zz"));
    EXPECT_FALSE(syntax.addArg(MSyntax::kNoArg));
    EXPECT_FALSE(syntax.setObjectType(MSyntax::kStringObjects, 3, 1));
    EXPECT_TRUE(host::logContains(host::LogLevel::kError, "'-a' is already in the syntax"));
}

TEST_F(ArgumentTest, DatabaseReadsSixFlagArgumentsAndCommandArguments)
{
    MSyntax syntax;
    syntax.addFlag("-f", "-flag", MSyntax::kBoolean, MSyntax::kLong, MSyntax::kDouble, MSyntax::kString,
                   MSyntax::kUnsigned, MSyntax::kDouble);
    syntax.addArg(MSyntax::kString);
    syntax.addArg(MSyntax::kLong);
    syntax.addArg(MSyntax::kDouble);
    MArgList list;
    list.addArg(MString("-f"));
    list.addArg(MString("yes"));
    list.addArg(2);
    list.addArg(3.5);
    list.addArg(MString("s"));
    list.addArg(4);
    list.addArg(5.0);
    list.addArg(MString("name"));
    list.addArg(3);
    list.addArg(0.5);
    MStatus status;
    MArgDatabase db(syntax, list, &status);
    ASSERT_TRUE(status) << host::logText();

    bool b = false;
    int i = 0;
    double d = 0.0;
    unsigned int u = 0;
    MString s;
    EXPECT_TRUE(db.getFlagArgument("-f", 0, b) && b);
    EXPECT_TRUE(db.getFlagArgument("flag", 1, i) && i == 2);
    EXPECT_TRUE(db.getFlagArgument("-flag", 2, d) && d == 3.5);
    EXPECT_TRUE(db.getFlagArgument("-f", 3, s) && s == "s");
    EXPECT_TRUE(db.getFlagArgument("-f", 4, u) && u == 4u);
    EXPECT_EQ(db.flagArgumentDouble("-f", 5), 5.0);
    EXPECT_FALSE(db.getFlagArgument("-f", 6, d)) << "past the flag's arguments";
    unsigned int position = 99;
    EXPECT_TRUE(db.getFlagArgumentPosition("-f", 0, position));
    EXPECT_EQ(position, 0u);
    EXPECT_EQ(db.numberOfFlagsUsed(), 1u);

    EXPECT_TRUE(db.getCommandArgument(0, s) && s == "name");
    EXPECT_EQ(db.commandArgumentInt(1), 3);
    EXPECT_EQ(db.commandArgumentDouble(2), 0.5);
    EXPECT_FALSE(db.getCommandArgument(3, s));
}

TEST_F(ArgumentTest, ParseFailuresAreLoggedAndAnswerNothing)
{
    MSyntax syntax;
    syntax.addFlag("-n", "-number", MSyntax::kLong);
    syntax.addArg(MSyntax::kLong);
    MArgList tooFew;
    MStatus status;
    MArgDatabase missing(syntax, tooFew, &status);
    EXPECT_FALSE(status);
    EXPECT_TRUE(host::logContains(host::LogLevel::kError, "needs 1 argument(s), got 0"));
    EXPECT_FALSE(missing.isFlagSet("-n"));

    MArgList wrongType;
    wrongType.addArg(MString("notANumber"));
    MArgDatabase wrong(syntax, wrongType, &status);
    EXPECT_FALSE(status);

    MArgList fine;
    fine.addArg(1);
    MArgDatabase db(syntax, fine, &status);
    ASSERT_TRUE(status);
    int n = 0;
    EXPECT_FALSE(db.getFlagArgument("-n", 0, n)) << "an unset flag has no argument";
    EXPECT_FALSE(db.isFlagSet("-noSuchFlag", &status));
    EXPECT_EQ(status, MStatus::kInvalidParameter) << "asking for a flag the syntax lacks is an error";

    MArgParser empty;
    EXPECT_FALSE(empty.isFlagSet("-n"));
    MStringArray objects;
    EXPECT_FALSE(empty.getObjects(objects));
}

TEST_F(ArgumentTest, ObjectCountsAreChecked)
{
    MSyntax syntax;
    syntax.setObjectType(MSyntax::kStringObjects, 1, 2);
    MStatus status;
    MArgDatabase none(syntax, MArgList(), &status);
    EXPECT_FALSE(status);
    MArgList three;
    for (const char* name : {"a", "b", "c"})
        three.addArg(MString(name));
    MArgDatabase tooMany(syntax, three, &status);
    EXPECT_FALSE(status);
    MArgList two;
    two.addArg(MString("a"));
    two.addArg(MString("b"));
    MArgDatabase ok(syntax, two, &status);
    ASSERT_TRUE(status);
    MStringArray objects;
    ASSERT_TRUE(ok.getObjects(objects));
    EXPECT_EQ(objects.length(), 2u);
}

// A context command adds its flags to the syntax through a copy: copies share one definition.
TEST_F(ArgumentTest, SyntaxCopiesShareTheirFlags)
{
    MSyntax original;
    MSyntax copy = original;
    copy.addFlag("-x", "-extra");
    MArgList list;
    list.addArg(MString("-x"));
    MStatus status;
    MArgParser parser(original, list, &status);
    EXPECT_TRUE(status);
    EXPECT_TRUE(parser.isFlagSet("-extra"));
}

TEST_F(ArgumentTest, AnEmptyCommandResultHasNoType)
{
    MCommandResult result;
    EXPECT_EQ(result.resultType(), MCommandResult::kInvalid);
    int i = 0;
    EXPECT_FALSE(result.getResult(i));
}
