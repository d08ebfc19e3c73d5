// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/common/image_numbers.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace rdl::writers {
namespace {

std::shared_ptr<const std::string> Image(const std::string& bytes) {
    return std::make_shared<const std::string>(bytes);
}

void ExpectNumber(ImageNumbers& numbers, const std::shared_ptr<const std::string>& image, std::size_t value,
                  bool isNew) {
    const ImageNumbers::Number number = numbers.Of(image);
    EXPECT_EQ(number.value, value) << *image;
    EXPECT_EQ(number.isNew, isNew) << *image;
}

TEST(ImageNumbers, CountFromZeroInTheOrderOfTheImages) {
    ImageNumbers numbers;
    const auto first = Image("first"), second = Image("second");
    ExpectNumber(numbers, first, 0, true);
    ExpectNumber(numbers, second, 1, true);
    ExpectNumber(numbers, second, 1, false);
    ExpectNumber(numbers, first, 0, false);
}

TEST(ImageNumbers, AreTheSameForEqualBytesAtAnotherAddress) {
    ImageNumbers numbers;
    ExpectNumber(numbers, Image("logo"), 0, true);
    ExpectNumber(numbers, Image("logo"), 0, false);
    ExpectNumber(numbers, Image("Logo"), 1, true);
    ExpectNumber(numbers, Image(std::string("logo\0", 5)), 2, true);
}

// The image that a cell loads is released after its row, and its address is used again.
TEST(ImageNumbers, DoNotMistakeANewImageAtAnAddressThatWasReleased) {
    ImageNumbers numbers;
    alignas(std::string) unsigned char place[sizeof(std::string)];
    const auto at = [&place](const std::string& bytes) {
        return std::shared_ptr<const std::string>(new (place) std::string(bytes),
                                                  [](const std::string* old) { std::destroy_at(old); });
    };
    ExpectNumber(numbers, Image("kept"), 0, true);
    ExpectNumber(numbers, at("kept"), 0, false);
    ExpectNumber(numbers, at("other"), 1, true);
}

TEST(ImageNumbers, KeepTheBytesOfNewImagesOnly) {
    ImageNumbers numbers;
    auto first = Image("logo"), again = Image("logo");
    const std::weak_ptr<const std::string> kept = first, other = again;
    numbers.Of(first);
    numbers.Of(again);
    first.reset();
    again.reset();
    EXPECT_FALSE(kept.expired());
    EXPECT_TRUE(other.expired());
}

}  // namespace
}  // namespace rdl::writers
