#include <maya/MColor.h>

#include <gtest/gtest.h>

namespace {

void expectColor(const MColor& c, float r, float g, float b, float a)
{
    EXPECT_NEAR(c.r, r, 1e-6f);
    EXPECT_NEAR(c.g, g, 1e-6f);
    EXPECT_NEAR(c.b, b, 1e-6f);
    EXPECT_NEAR(c.a, a, 1e-6f);
}

TEST(ColorTest, constructorsFillChannels)
{
    expectColor(MColor(), 0, 0, 0, 1);
    expectColor(MColor(0.25f), 0, 0, 0, 0.25f);
    expectColor(MColor(1, 0.5f), 1, 0.5f, 0, 1);
    const float rgb[3] = {0.1f, 0.2f, 0.3f};
    expectColor(MColor(rgb), 0.1f, 0.2f, 0.3f, 1);
    expectColor(MColor(MColor::kRGB, static_cast<unsigned char>(255), static_cast<unsigned char>(0),
                       static_cast<unsigned char>(51), static_cast<unsigned char>(255)),
                1, 0, 0.2f, 1);
    expectColor(MColor(MColor::kRGB, static_cast<unsigned short>(65535), static_cast<unsigned short>(0),
                       static_cast<unsigned short>(0)),
                1, 0, 0, 1);
}

TEST(ColorTest, colorModelsRoundTrip)
{
    expectColor(MColor(MColor::kHSV, 120.0f, 1.0f, 1.0f), 0, 1, 0, 1);
    expectColor(MColor(MColor::kHSV, 0.0, 0.0, 0.5), 0.5f, 0.5f, 0.5f, 1);
    expectColor(MColor(MColor::kCMY, 1.0f, 0.0f, 0.0f, 0.5f), 0, 1, 1, 0.5f);

    const MColor c(0.2f, 0.6f, 0.4f, 0.9f);
    float h = 0, s = 0, v = 0, a = 0;
    EXPECT_TRUE(c.get(MColor::kHSV, h, s, v, a));
    EXPECT_NEAR(h, 150.0f, 1e-4f);
    EXPECT_NEAR(s, 2.0f / 3.0f, 1e-6f);
    EXPECT_NEAR(v, 0.6f, 1e-6f);
    EXPECT_EQ(a, 0.9f);
    MColor back;
    back.set(MColor::kHSV, h, s, v, a);
    expectColor(back, 0.2f, 0.6f, 0.4f, 0.9f);

    EXPECT_FALSE(c.get(static_cast<float*>(nullptr)));
}

TEST(ColorTest, arithmeticIsComponentWise)
{
    const MColor a(0.5f, 0.25f, 1.0f, 1.0f);
    expectColor(a * 2.0f, 1, 0.5f, 2, 2);
    expectColor(2.0f * a, 1, 0.5f, 2, 2);
    expectColor(a * MColor(0.5f, 2.0f, 0.0f, 0.5f), 0.25f, 0.5f, 0, 0.5f);
    expectColor(a + a - a, 0.5f, 0.25f, 1, 1);
    expectColor(a / 2.0f, 0.25f, 0.125f, 0.5f, 0.5f);
    EXPECT_EQ(a[9], 1.0f);
    EXPECT_TRUE(a != MColor::kOpaqueBlack);
}

} // namespace
