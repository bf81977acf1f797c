// Journals that are torn, flipped or made up: whatever stands in one, what comes out is a state that was, or none.

#include "app/child_process.h"
#include "app/edit_words.h"
#include "journal/bytes.h"
#include "journal/journal_file.h"
#include "journal/leftover.h"
#include "journal/writer.h"
#include "support/files.h"

#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <sstream>
#include <sys/mman.h>
#include <unistd.h>

namespace journal_test {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMarkBytes = 8;
constexpr std::size_t kHeadBytes = 12; // of a difference: its length and its checksum

std::string bytesOf(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string stateIn(const fs::path& path)
{
    journal::Objects objects;
    journal::readJournal(path, objects);
    EXPECT_LE(objects.byteCount(), journal::kMostBytes);
    const auto work = journal::leftoverOf(objects);
    return !work ? "none"
                 : std::to_string(work->image.desk.historyIndex) + "/" + std::to_string(work->image.entries.size())
                       + " " + std::to_string(work->image.timeline->Sources.size()) + " "
                       + std::to_string(work->image.desk.selectionStart);
}

class Reading : public testing::Test {
protected:
    Reading()
    {
        std::ostringstream told;
        app::EditSession session(told);
        session.openJournal(folder_.path());
        for (const char* const line : {"media clip 3000 va", "add clip", "overlay clip", "slider 1000", "split",
                                       "range 300 800", "add-effect Blur", "cut", "undo"}) {
            app::runLine(session, line, told);
        }
    }

    void SetUp() override
    {
        whole_ = bytesOf(folder_ / "journal/work.journal");
        std::uint32_t length = 0;
        for (std::size_t end = kMarkBytes; end < whole_.size(); end += kHeadBytes + length) {
            std::memcpy(&length, &whole_[end], sizeof length);
            ends_.push_back(end);
        }
        ends_.push_back(whole_.size());
        ASSERT_GT(ends_.size(), 6U);
        for (const std::size_t end : ends_) {
            states_.push_back(stateOf(whole_.substr(0, end)));
        }
    }

    std::string stateOf(const std::string& bytes)
    {
        EXPECT_EQ(::ftruncate(file_.get(), 0), 0);
        EXPECT_EQ(::pwrite(file_.get(), bytes.data(), bytes.size(), 0), std::ssize(bytes));
        return stateIn(path_);
    }
    /// Of the differences that are whole ahead of a byte.
    const std::string& stateAhead(std::size_t byte) const
    {
        const auto next = std::ranges::upper_bound(ends_, byte);
        return next == ends_.begin() ? kNone : states_[static_cast<std::size_t>(next - ends_.begin()) - 1];
    }

    const std::string kNone = "none";
    testmedia::TempFolder folder_;
    disk::Descriptor file_{::memfd_create("torn", 0)};
    fs::path path_ = "/proc/self/fd/" + std::to_string(file_.get());
    std::string whole_;
    std::vector<std::size_t> ends_; // of the mark, then of each difference
    std::vector<std::string> states_;
};

TEST_F(Reading, EndsAtTheLastWholeDifference)
{
    EXPECT_NE(states_.back(), kNone);
    for (std::size_t i = 0; i <= whole_.size(); ++i) {
        ASSERT_EQ(stateOf(whole_.substr(0, i)), stateAhead(i)) << "torn at byte " << i;
    }
    for (std::size_t i = 0; i < whole_.size(); ++i) {
        std::string flipped = whole_;
        flipped[i] = static_cast<char>(flipped[i] ^ (1 << i % 8));
        ASSERT_EQ(stateOf(flipped), i < kMarkBytes ? kNone : stateAhead(i)) << "flipped in byte " << i;
    }
    std::string huge = whole_;
    std::memset(&huge[ends_[2]], 0xFF, sizeof(std::uint32_t));
    EXPECT_EQ(stateOf(huge), states_[2]);
}

/// Changes of everything, over and over.
TEST(Writing, StaysInProportionToTheState)
{
    constexpr std::size_t kSlack = 3u << 19;
    const testmedia::TempFolder folder;
    const std::string path = folder / "work.journal";
    journal::StateImage image;
    image.media = std::make_shared<journal::MediaTable>();
    image.tracks = {1, 2, 3, 4};
    image.desk.bookmarks = {{}};
    image.desk.isModified = true;
    std::uintmax_t most = 0;
    {
        journal::Writer writer(journal::JournalFile::open(path));
        for (std::int32_t round = 0; round < 100; ++round) {
            ModuleHistory::ImageRecords laid;
            for (std::int16_t seq = 0; seq < 2000; ++seq) {
                laid.Sources.push_back({.Start = seq * 100 + round, .Stop = round, .Track = 1, .Seq = seq});
            }
            image.timeline = image.newest = std::make_shared<ModuleHistory::ImageRecords>(std::move(laid));
            writer.write(std::make_shared<journal::StateImage>(image));
            writer.drain();
            most = std::max(most, fs::file_size(path));
        }
        EXPECT_FALSE(writer.hasFailed());
    }
    EXPECT_LT(most, kSlack);
    journal::Objects objects;
    ASSERT_TRUE(journal::readJournal(path, objects));
    EXPECT_EQ(*journal::leftoverOf(objects)->image.timeline, *image.timeline);
}

/// Differences with good checksums that say anything, brought back as far as they can be read.
TEST_F(Reading, SurvivesWhatNobodyHasWritten)
{
    std::mt19937 random(20'261'122);
    const auto pick = [&](std::size_t choices) { return random() % choices; };
    int readable = 0;
    for (int i = 0; i < 3000; ++i) {
        const std::size_t which = pick(ends_.size() - 1);
        const std::size_t from = ends_[which] + kHeadBytes;
        std::string difference = whole_.substr(from, ends_[which + 1] - from);
        for (std::size_t changes = 1 + pick(3); changes > 0; --changes) {
            const std::size_t at = pick(difference.size());
            if (pick(2) == 0) {
                const std::int32_t values[] = {0,           -1,     1 << 30,
                                               0x7FFF'FFFF, 70'000, static_cast<std::int32_t>(random())};
                std::memcpy(&difference[at], &values[pick(6)], std::min<std::size_t>(4, difference.size() - at));
            } else {
                difference[at] = static_cast<char>(random());
            }
        }
        journal::ByteWriter bytes;
        bytes.bytes = whole_.substr(0, ends_[which]);
        bytes.put(static_cast<std::uint32_t>(difference.size()));
        bytes.put(journal::checksum(difference));
        const std::string state = stateOf(bytes.bytes + difference);
        readable += state != kNone && state != states_[which] ? 1 : 0;
        if (i % 150 == 0) {
            const testmedia::TempFolder folder;
            fs::create_directories(folder / "journal");
            std::ofstream(folder / "journal/work.journal", std::ios::binary) << bytesOf(path_);
            std::ostringstream told;
            app::EditSession session(told);
            session.openJournal(folder.path());
            app::runLine(session, "undo", told);
            app::runLine(session, "redo", told);
        }
    }
    EXPECT_GT(readable, 100);
}

} // namespace
} // namespace journal_test
