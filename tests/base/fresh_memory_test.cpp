// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/fresh_memory.h"

#include <sys/mman.h>
#include <unistd.h>

namespace tessel {

namespace {

const auto kPage = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));

// Pages that nobody has touched yet.
class FreshPages {
  public:
    explicit FreshPages(std::size_t pages)
        : bytes_(pages * kPage),
          first_(::mmap(nullptr, bytes_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)) {
        EXPECT_NE(first_, MAP_FAILED);
    }
    ~FreshPages() { ::munmap(first_, bytes_); }
    FreshPages(const FreshPages&) = delete;
    FreshPages& operator=(const FreshPages&) = delete;

    char* at(std::size_t page) const { return static_cast<char*>(first_) + page * kPage; }

    // Which of them are there, a letter each: "x" or "-".
    std::string there() const {
        std::vector<unsigned char> states(bytes_ / kPage);
        EXPECT_EQ(::mincore(first_, bytes_, states.data()), 0);
        std::string letters;
        for (const unsigned char state : states)
            letters += (state & 1) != 0 ? 'x' : '-';
        return letters;
    }

  private:
    const std::size_t bytes_;
    void* const first_;
};

}  // namespace

TEST(FreshMemory, IsThereOnAllPagesThatItLiesOnAndOnNoOther) {
    const FreshPages pages(24);
    const bool provided = provideMemory(pages.at(2) + 100, 17 * kPage);
    const std::string all = "--xxxxxxxxxxxxxxxxxx----";
    EXPECT_EQ(pages.there(), provided ? all : std::string(24, '-'));
}

TEST(FreshMemory, OfFewPagesIsLeftToTheSystem) {
    const FreshPages pages(2);
    EXPECT_FALSE(provideMemory(pages.at(0), 100));
    EXPECT_EQ(pages.there(), "--");
}

TEST(FreshMemory, ThatIsNoMemoryIsNoFailure) {
    const FreshPages pages(8);
    ::munmap(pages.at(4), 4 * kPage);
    EXPECT_FALSE(provideMemory(pages.at(4), 4 * kPage));
    EXPECT_FALSE(provideMemory(nullptr, std::size_t{1} << 20));
}

TEST(FreshMemory, OfAVectorIsThatByWhichItGrowsInItsRoom) {
    std::vector<double> values(10, 1.5);
    values.reserve(1'000'000);
    const double* const first = values.data();
    for (const std::size_t size : {0U, 10U, 500'000U, 1'000'000U, 2'000'000U})
        provideMemoryFor(values, size);
    EXPECT_EQ(values.data(), first);
    EXPECT_EQ(values, std::vector<double>(10, 1.5));
    values.resize(1'000'000);
    EXPECT_EQ(values.back(), 0);
}

}  // namespace tessel
