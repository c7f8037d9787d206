#include <maya/MString.h>
#include <maya/MTypeId.h>
#include <maya/MUuid.h>

#include <gtest/gtest.h>

#include <cctype>
#include <set>
#include <string>

namespace {

TEST(TypeIdTest, prefixFormCombinesVendorAndLocalId)
{
    EXPECT_EQ(MTypeId(0x87000).id(), 0x87000u);
    EXPECT_EQ(MTypeId(0x0012A4, 0x05).id(), 0x0012A405u);
    EXPECT_EQ(MTypeId(0x0012A4, 0x105).id(), 0x0012A405u);  // only 8 bits of local id
    EXPECT_EQ(MTypeId(7), MTypeId(7));
    EXPECT_NE(MTypeId(7), MTypeId(8));
    MStatus status(MS::kFailure);
    EXPECT_EQ(MTypeId().id(&status), 0u);
    EXPECT_EQ(status, MS::kSuccess);
}

TEST(UuidTest, generatedIdentifiersAreUniqueVersionFourValues)
{
    std::set<std::string> seen;
    for (int i = 0; i < 2000; ++i) {
        MUuid uuid;
        EXPECT_FALSE(uuid.valid());
        EXPECT_EQ(uuid.generate(), MS::kSuccess);
        ASSERT_TRUE(uuid.valid());
        unsigned char bytes[16];
        ASSERT_EQ(uuid.get(bytes), MS::kSuccess);
        EXPECT_EQ(bytes[6] >> 4, 4);
        EXPECT_EQ(bytes[8] & 0xC0, 0x80);
        seen.insert(uuid.asString().asChar());
    }
    EXPECT_EQ(seen.size(), 2000u);
}

TEST(UuidTest, stringFormRoundTrips)
{
    MUuid uuid;
    uuid.generate();
    const MString text = uuid.asString();
    ASSERT_EQ(text.length(), 36u);
    for (int i = 0; i < 36; ++i) {
        const char c = text.asChar()[i];
        if (i == 8 || i == 13 || i == 18 || i == 23)
            EXPECT_EQ(c, '-');
        else
            EXPECT_TRUE(std::isxdigit(static_cast<unsigned char>(c)) && !std::islower(static_cast<unsigned char>(c)));
    }
    MStatus status;
    const MUuid parsed(text, &status);
    EXPECT_EQ(status, MS::kSuccess);
    EXPECT_EQ(parsed, uuid);
    EXPECT_EQ(MString(parsed), text);

    MString lower = text;
    lower.toLowerCase();
    EXPECT_EQ(MUuid(lower), uuid);
}

TEST(UuidTest, malformedStringsLeaveItInvalid)
{
    for (const char* bad : {"", "not-a-uuid", "0123456789ABCDEF0123456789ABCDEF0123",
                            "01234567-89AB-CDEF-0123-456789ABCDEG", "01234567-89AB-CDEF-0123-456789ABCDE",
                            "01234567+89AB-CDEF-0123-456789ABCDEF"}) {
        MStatus status;
        const MUuid uuid(MString(bad), &status);
        EXPECT_FALSE(uuid.valid()) << bad;
        EXPECT_EQ(status, MS::kInvalidParameter) << bad;
        EXPECT_EQ(uuid.asString(), MString());
    }
}

TEST(UuidTest, rawFormsAndComparison)
{
    const unsigned char bytes[16] = {0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF,
                                     0xFE, 0xDC, 0xBA, 0x98, 0x76, 0x54, 0x32, 0x10};
    const MUuid fromBytes(bytes);
    EXPECT_EQ(fromBytes.asString(), MString("01234567-89AB-CDEF-FEDC-BA9876543210"));
    const unsigned int words[4] = {0x01234567u, 0x89ABCDEFu, 0xFEDCBA98u, 0x76543210u};
    EXPECT_EQ(MUuid(words), fromBytes);

    EXPECT_FALSE(MUuid(static_cast<const unsigned char*>(nullptr)).valid());
    EXPECT_EQ(MUuid(), MUuid());
    EXPECT_NE(MUuid(), fromBytes);

    MUuid copied;
    copied.copy(fromBytes);
    EXPECT_EQ(copied, fromBytes);
    EXPECT_EQ(copied.get(nullptr), MS::kInvalidParameter);
    unsigned char out[16];
    EXPECT_EQ(MUuid().get(out), MS::kFailure);
}

} // namespace
