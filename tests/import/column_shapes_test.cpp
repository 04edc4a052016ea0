// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/column_shapes.h"

#ifdef __x86_64__

namespace tessel {

namespace {

constexpr std::size_t kAround = NumberShape::kMost;

// Numbers far from the ends of a text, one after the other.
class Column {
  public:
    explicit Column(const std::vector<std::string>& numbers) {
        text_.assign(kAround, 'x');
        for (const std::string& number : numbers) {
            places_.push_back({text_.size(), number.size()});
            text_ += number + ';';
        }
        text_.append(kAround, 'x');
        shapes.beginText(text_);
    }

    const char* first(std::size_t i) const { return text_.data() + places_[i].first; }
    std::size_t size() const { return places_.size(); }

    bool takes(std::size_t i) {
        const std::size_t size = places_[i].second;
        double value = 42;
        const auto isAll = [=](std::size_t length) { return length == size; };
        const char* const end = shapes.take(first(i), value, isAll);
        if (end == nullptr) {
            EXPECT_EQ(value, 42);
            return false;
        }
        EXPECT_EQ(end, first(i) + size);
        EXPECT_EQ(value, std::strtod(first(i), nullptr));
        return true;
    }
    bool learns(std::size_t i) { return shapes.learn(first(i), first(i) + places_[i].second); }

    ColumnShapes shapes;

  private:
    std::string text_;
    std::vector<std::pair<std::size_t, std::size_t>> places_;
};

// So many numbers, each of a shape of its own.
std::vector<std::string> numbersOfOwnShape(std::size_t count) {
    std::vector<std::string> numbers;
    for (std::size_t length = 2; numbers.size() < count; ++length)
        for (std::size_t point = 0; point < length && numbers.size() < count; ++point)
            for (const char* const sign : {"", "-", "+"})
                if (numbers.size() < count)
                    numbers.push_back(sign + std::string(length, '5').replace(point, 1, "."));
    return numbers;
}

}  // namespace

TEST(ColumnShapes, TakeANumberWhoseShapeWasLearnt) {
    Column column({"12.5", "-7.25", "98.7"});
    EXPECT_FALSE(column.takes(0));
    EXPECT_TRUE(column.learns(0));
    EXPECT_EQ(column.shapes.valueOfLearnt(column.first(0) + 4), 12.5);
    EXPECT_TRUE(column.takes(0));
    EXPECT_FALSE(column.takes(1));
    EXPECT_TRUE(column.takes(2));
}

TEST(ColumnShapes, KeepTheLatestEight) {
    Column column(numbersOfOwnShape(9));
    for (std::size_t i = 0; i < 8; ++i)
        EXPECT_TRUE(column.learns(i));
    for (int round = 0; round < 3; ++round)
        for (std::size_t i = 0; i < 8; ++i)
            EXPECT_TRUE(column.takes(i)) << i;
    EXPECT_TRUE(column.learns(8));
    EXPECT_FALSE(column.takes(0));
    for (std::size_t i = 1; i < 9; ++i)
        EXPECT_TRUE(column.takes(i)) << i;
}

TEST(ColumnShapes, TakeNoNumberThatIsLongerOrShorterThanItMayBe) {
    Column column({"12.5", "123.5"});
    column.learns(0);
    double value = 0;
    EXPECT_EQ(column.shapes.take(column.first(0), value, [](std::size_t) { return false; }), nullptr);
    EXPECT_FALSE(column.takes(1));
}

// Only so far from the ends of a text that what is read lies in it.
TEST(ColumnShapes, AreOfUseWhereTheBytesAroundAreOfTheText) {
    for (std::size_t size = 0; size < 80; ++size) {
        const std::string text(size, '5');
        ColumnShapes shapes;
        shapes.beginText(text);
        for (std::size_t place = 0; place <= size; ++place) {
            const bool inside = place >= kAround && place + kAround < size;
            ASSERT_EQ(shapes.areOfUseAt(text.data() + place), inside) << size << ' ' << place;
            double value = 0;
            const char* const end =
                shapes.take(text.data() + place, value, [](std::size_t length) { return length == 1; });
            ASSERT_EQ(end != nullptr, inside) << size << ' ' << place;
        }
    }
    ColumnShapes shapes;
    shapes.beginText({});
    EXPECT_FALSE(shapes.areOfUseAt(nullptr));
}

TEST(ColumnShapes, GiveUpWhereNearlyEveryNumberHasItsOwnUntilTheNextText) {
    Column column(numbersOfOwnShape(150));
    std::size_t learnt = 0;
    for (; column.shapes.areOfUseAt(column.first(learnt)); ++learnt)
        column.learns(learnt);
    EXPECT_EQ(learnt, 100U);
    EXPECT_FALSE(column.takes(learnt - 1));
    const std::string around(kAround, 'x'), next = around + "8.5;" + around;
    const char* const first = next.data() + kAround;
    column.shapes.beginText(next);
    EXPECT_TRUE(column.shapes.learn(first, first + 3));
    EXPECT_TRUE(column.shapes.areOfUseAt(first));
}

}  // namespace tessel

#endif
