#include <maya/MStatus.h>
#include <maya/MString.h>

#include "host/log.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

class StatusTest : public ::testing::Test
{
protected:
    void SetUp() override { host::clearLog(); }

    static std::string lastError()
    {
        const auto& entries = host::logEntries();
        return entries.empty() ? std::string() : entries.back().text;
    }
};

int gEvaluations = 0;

MStatus countedFailure()
{
    ++gEvaluations;
    return MS::kNotFound;
}

MStatus returnsItOnFailure()
{
    CHECK_MSTATUS_AND_RETURN_IT(countedFailure());
    return MS::kSuccess;
}

int returnsValueOnFailure(MStatus status)
{
    CHECK_MSTATUS_AND_RETURN(status, -1);
    return 7;
}

TEST_F(StatusTest, successAndFailureConvertToBoolAndCompareByCode)
{
    MStatus ok;
    MStatus failed(MS::kInvalidParameter);
    EXPECT_TRUE(ok);
    EXPECT_FALSE(ok.error());
    EXPECT_FALSE(failed);
    EXPECT_TRUE(failed.error());
    EXPECT_EQ(failed.statusCode(), MStatus::kInvalidParameter);
    EXPECT_TRUE(failed == MS::kInvalidParameter);
    EXPECT_TRUE(MS::kInvalidParameter == failed);
    EXPECT_TRUE(MS::kSuccess != failed);
    EXPECT_TRUE(failed != ok);

    failed.clear();
    EXPECT_TRUE(failed);
    EXPECT_EQ(failed, MS::kSuccess);
}

TEST_F(StatusTest, setRejectsCodesOutsideTheEnumeration)
{
    MStatus status;
    status.set(false, 200, 0);
    EXPECT_EQ(status.statusCode(), MS::kFailure);
    EXPECT_FALSE(status);
}

TEST_F(StatusTest, errorStringNamesEachCode)
{
    const std::pair<MStatus::MStatusCode, const char*> expected[] = {
        {MS::kSuccess, "(kSuccess): No error"},
        {MS::kFailure, "(kFailure): Operation failed"},
        {MS::kInsufficientMemory, "(kInsufficientMemory): Insufficient memory"},
        {MS::kInvalidParameter, "(kInvalidParameter): Invalid parameter"},
        {MS::kLicenseFailure, "(kLicenseFailure): Not licensed for this operation"},
        {MS::kUnknownParameter, "(kUnknownParameter): Unknown parameter"},
        {MS::kNotImplemented, "(kNotImplemented): Not implemented"},
        {MS::kNotFound, "(kNotFound): Not found"},
        {MS::kEndOfFile, "(kEndOfFile): End of file"},
    };
    for (const auto& [code, text] : expected)
        EXPECT_STREQ(MStatus(code).errorString().asChar(), text);

    MStatus status(MS::kNotFound);
    std::ostringstream out;
    out << status;
    EXPECT_EQ(out.str(), "(kNotFound): Not found");
}

TEST_F(StatusTest, perrorWritesMessageAndErrorStringToTheLog)
{
    MStatus(MS::kNotFound).perror("lookup failed");
    ASSERT_EQ(host::logEntries().size(), 1u);
    EXPECT_EQ(host::logEntries()[0].level, host::LogLevel::kError);
    EXPECT_EQ(lastError(), "lookup failed: (kNotFound): Not found");

    MStatus(MS::kFailure).perror(MString("as MString"));
    EXPECT_EQ(lastError(), "as MString: (kFailure): Operation failed");

    MStatus(MS::kFailure).perror(static_cast<const char*>(nullptr));
    EXPECT_EQ(lastError(), "(kFailure): Operation failed");
}

TEST_F(StatusTest, pAPIerrorNamesFileLineAndMessage)
{
    const MStatus status(MS::kInvalidParameter);
    status.pAPIerror("src/foo.cpp", 42);
    EXPECT_EQ(lastError(), "API error at src/foo.cpp:42: (kInvalidParameter): Invalid parameter");
    status.pAPIerror("src/foo.cpp", 43, "creating node");
    EXPECT_EQ(lastError(), "API error at src/foo.cpp:43: creating node: (kInvalidParameter): Invalid parameter");
    status.pAPIerror(nullptr, 1, nullptr);
    EXPECT_EQ(lastError(), "API error at <unknown file>:1: (kInvalidParameter): Invalid parameter");
}

TEST_F(StatusTest, checkMacrosLogOnlyFailuresWithTheCallersLocation)
{
    CHECK_MSTATUS(MStatus());
    EXPECT_TRUE(host::logEntries().empty());

    const int line = __LINE__ + 1;
    CHECK_MSTATUS(MStatus(MS::kFailure));
    ASSERT_EQ(host::logEntries().size(), 1u);
    EXPECT_NE(lastError().find("statusTest.cpp:" + std::to_string(line) + ": (kFailure)"), std::string::npos)
        << lastError();

    EXPECT_EQ(returnsValueOnFailure(MS::kSuccess), 7);
    EXPECT_EQ(returnsValueOnFailure(MS::kFailure), -1);
    EXPECT_TRUE(MFAIL(MStatus(MS::kFailure)));
    EXPECT_FALSE(MFAIL(MStatus()));
}

TEST_F(StatusTest, checkAndReturnItEvaluatesItsArgumentOnce)
{
    gEvaluations = 0;
    const MStatus status = returnsItOnFailure();
    EXPECT_EQ(status, MS::kNotFound);
    EXPECT_EQ(gEvaluations, 1);
    EXPECT_TRUE(host::logContains(host::LogLevel::kError, "(kNotFound)"));
}

} // namespace
