#include "export/imagepreview.h"

#include <gtest/gtest.h>

#include <array>

namespace korvane
{

using Color = std::array<int, 4>;

class MakePreviewTest : public ::testing::Test
{
protected:
    void Set(int x, int y, const Color& color)
    {
        for (std::size_t i = 0; i < 4; i++) {
            image[std::size_t(y * imagewidth + x) * 4 + i] = static_cast<unsigned char>(color[i]);
        }
    }

    std::array<int, 3> ShownAt(int x, int y) const
    {
        const std::vector<unsigned char> preview = MakePreview(image.data());
        const unsigned char* shown = &preview.at(std::size_t(y * 640 + x) * 3);
        return {shown[0], shown[1], shown[2]};
    }

    std::vector<unsigned char> image = std::vector<unsigned char>(1280 * 1024 * 4, 0);
};

using Shown = std::array<int, 3>;

TEST_F(MakePreviewTest, ShowsACheckerboardWhereTheImageIsClear)
{
    EXPECT_EQ(MakePreview(image.data()).size(), 640U * 512 * 3);
    EXPECT_EQ(ShownAt(0, 0), (Shown{100, 100, 100}));
    EXPECT_EQ(ShownAt(15, 15), (Shown{100, 100, 100}));
    EXPECT_EQ(ShownAt(16, 15), (Shown{116, 116, 116}));
    EXPECT_EQ(ShownAt(15, 16), (Shown{116, 116, 116}));
    EXPECT_EQ(ShownAt(16, 16), (Shown{100, 100, 100}));
    EXPECT_EQ(ShownAt(639, 511), (Shown{100, 100, 100})); // squares 39 and 31
}

TEST_F(MakePreviewTest, AveragesBlocksAndLaysThemOver)
{
    Set(40, 2, {200, 10, 0, 255});
    Set(41, 2, {100, 10, 0, 255});
    Set(40, 3, {50, 10, 0, 0});
    Set(41, 3, {51, 13, 255, 4});
    // averages 401/4 = 100, 43/4 = 10, 255/4 = 63 and 514/4 = 128, over grey 116:
    // (100 * 128 + 127 * 116) / 255 = 27532 / 255, 16012 / 255, 22796 / 255
    EXPECT_EQ(ShownAt(20, 1), (Shown{107, 62, 89}));
    EXPECT_EQ(ShownAt(19, 1), (Shown{116, 116, 116}));
}

TEST_F(MakePreviewTest, ShowsAnOpaqueColorAsItIs)
{
    for (const auto& [x, y] : {std::array{1278, 1022}, {1279, 1022}, {1278, 1023}, {1279, 1023}}) {
        Set(x, y, {1, 128, 255, 255});
    }
    EXPECT_EQ(ShownAt(639, 511), (Shown{1, 128, 255}));
}

} // namespace korvane
