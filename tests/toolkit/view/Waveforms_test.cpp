#include <orvo/Draw.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/TemporaryFolder.h"

namespace {

using orvo::DrawSvg;
using orvo::Layout;
using orvo::MakeLayout;
using orvo::Session;
using orvo::Waveform;
using testing::HasSubstr;
using testing::Not;

namespace fs = std::filesystem;

constexpr std::uint32_t kFrames = 300'000;  // as many as a cache keeps

std::string Number(std::uint32_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i) {
        text += static_cast<char>(value >> (8 * i));
    }
    return text;
}

/// A mono file.
/// @param kind  1: whole numbers, 3: real ones
void WriteWave(const fs::path& path, std::uint32_t kind, std::uint32_t bytesPerSample,
               const std::string& samples) {
    constexpr std::uint32_t kRate = 48'000;
    const auto size = static_cast<std::uint32_t>(samples.size());
    std::ofstream(path, std::ios::binary)
        << "RIFF" << Number(36 + size, 4) << "WAVEfmt " << Number(16, 4) << Number(kind, 2)
        << Number(1, 2) << Number(kRate, 4) << Number(kRate * bytesPerSample, 4)
        << Number(bytesPerSample, 2) << Number(bytesPerSample * 8, 2) << "data" << Number(size, 4)
        << samples;
}

/// A sound that is silent in its first half, and alternates between levels in its second half.
void WriteSound(const fs::path& path, std::uint32_t frames, std::uint16_t highest = 16'384) {
    constexpr std::uint16_t kLowest = 0xE000;
    std::string samples;
    for (std::uint32_t i = 0; i < frames; ++i) {
        samples += Number(i < frames / 2 ? 0 : i % 7 == 0 ? highest : kLowest, 2);
    }
    WriteWave(path, 1, 2, samples);
}

class Waveforms : public testing::Test {
protected:
    Waveforms() { WriteSound(Sound(), kFrames); }

    fs::path Sound() const { return folder_ / "a.wav"; }
    fs::path Cache() const { return folder_ / "kept"; }

    /// A session that plays the sound from its first second on.
    Session Playing() const {
        Session session;
        session.duration = 480'000;
        session.files = {{.id = 1, .path = Sound().string()}};
        session.audioTracks = {{.id = 1, .name = "Voice", .clips = {}}};
        session.audioTracks[0].clips = {
            {.id = 5, .fileId = 1, .duration = kFrames, .startPoint = 48'000, .name = "Hello"}};
        return session;
    }

    std::optional<Waveform> Read(const orvo::WaveformOptions& options = {}) const {
        return orvo::ReadWaveforms(MakeLayout(Playing()), options)[0];
    }

    std::vector<fs::path> Kept() const {
        std::vector<fs::path> files;
        for (const auto& entry : fs::directory_iterator(Cache())) {
            files.push_back(entry.path());
        }
        return files;
    }

    test::TemporaryFolder folder_;
};

bool AreEqual(const orvo::Peak& left, const orvo::Peak& right) {
    return left.lowest == right.lowest && left.highest == right.highest;
}

bool AreEqual(const std::optional<Waveform>& left, const std::optional<Waveform>& right) {
    if (!left || !right || left->framesPerPeak != right->framesPerPeak ||
        left->frames != right->frames || left->runs.size() != right->runs.size()) {
        return false;
    }
    for (std::size_t i = 0; i < left->runs.size(); ++i) {
        if (left->runs[i].first != right->runs[i].first ||
            !std::ranges::equal(left->runs[i].peaks, right->runs[i].peaks,
                                [](const auto& a, const auto& b) { return AreEqual(a, b); })) {
            return false;
        }
    }
    return true;
}

TEST_F(Waveforms, HaveTheLowestAndHighestValueOfEachStretch) {
    Session session = Playing();
    session.files.push_back({.id = 2, .path = (folder_ / "absent.wav").string()});
    session.files.push_back({.id = 3, .path = folder_.Write("text.wav", "no sound").string()});
    const auto waveforms = orvo::ReadWaveforms(MakeLayout(session));
    ASSERT_EQ(waveforms.size(), 3u);
    ASSERT_TRUE(waveforms[0]);
    EXPECT_FALSE(waveforms[1]);
    EXPECT_FALSE(waveforms[2]);
    EXPECT_EQ(waveforms[0]->frames, kFrames);
    EXPECT_EQ(waveforms[0]->framesPerPeak, 8u);
    const std::vector<orvo::Peak>* const peaks = waveforms[0]->Whole();
    ASSERT_NE(peaks, nullptr);
    EXPECT_EQ(peaks->size(), 37'500u);
    EXPECT_EQ(peaks->front().highest, 0);
    EXPECT_FLOAT_EQ(peaks->back().highest, 0.5F);
    EXPECT_FLOAT_EQ(peaks->back().lowest, -0.25F);
}

TEST_F(Waveforms, AreWithinTheRangeWhateverTheFileHolds) {
    std::string samples;
    for (const float level : {NAN, 7.F, -HUGE_VALF, 0.25F}) {
        samples += Number(std::bit_cast<std::uint32_t>(level), 4);
    }
    WriteWave(Sound(), 3, 4, samples);
    const auto read = Read();
    ASSERT_TRUE(read);
    const std::vector<orvo::Peak>* const peaks = read->Whole();
    ASSERT_NE(peaks, nullptr);
    EXPECT_EQ(peaks->at(0).highest, 0);
    EXPECT_EQ(peaks->at(1).highest, 1);
    EXPECT_EQ(peaks->at(2).lowest, -1);
    EXPECT_EQ(peaks->at(3).lowest, 0.25F);
}

TEST_F(Waveforms, AreNotReadOnceTheReadIsStopped) {
    EXPECT_FALSE(Read({.isStopped = [] { return true; }}));
}

TEST_F(Waveforms, OfAPictureAreThoseOfWhatItShows) {
    Session session = Playing();
    const Layout layout = MakeLayout(session, {.from = 48'000 + 140'000, .to = 48'000 + 160'000});
    const auto read = orvo::ReadWaveforms(layout, {.width = 1000})[0];
    ASSERT_TRUE(read);
    EXPECT_EQ(read->framesPerPeak, 8u) << "a power of two, at most half a pixel";
    EXPECT_EQ(read->Whole(), nullptr);
    EXPECT_FALSE(read->Span(139'000, 139'008));
    EXPECT_EQ(read->Span(141'000, 141'100)->highest, 0);
    EXPECT_FLOAT_EQ(read->Span(159'000, 159'100)->highest, 0.5F);
    EXPECT_FALSE(read->Span(161'000, 161'008));
    EXPECT_FALSE(read->Span(-1, 10));
    EXPECT_FALSE(read->Span(kFrames, kFrames + 1));
}

TEST_F(Waveforms, OfAPictureAreAsFineAsItNeeds) {
    const Layout layout = MakeLayout(Playing(), {.from = 48'000, .to = 48'000 + 500});
    const auto read = orvo::ReadWaveforms(layout, {.width = 1000})[0];
    ASSERT_TRUE(read);
    EXPECT_EQ(read->framesPerPeak, 1u);
    EXPECT_LE(read->runs.at(0).peaks.size(), 510u);
}

TEST_F(Waveforms, OfAPictureThatDoesNotShowTheFileAreNotRead) {
    const Layout layout = MakeLayout(Playing(), {.from = 0, .to = 40'000});
    EXPECT_FALSE(orvo::ReadWaveforms(layout, {.width = 1000})[0]);
}

TEST_F(Waveforms, OfALoopAreThoseOfBothItsEnds) {
    Session session = Playing();
    session.audioTracks[0].clips[0].looped = true;
    session.audioTracks[0].clips[0].duration = 4 * kFrames;
    const std::int64_t again = 48'000 + kFrames;
    const Layout layout = MakeLayout(session, {.from = again - 1000, .to = again + 1000});
    const auto read = orvo::ReadWaveforms(layout, {.width = 1000})[0];
    ASSERT_TRUE(read);
    EXPECT_EQ(read->runs.size(), 2u);
    EXPECT_EQ(read->Span(500, 520)->highest, 0);
    EXPECT_FLOAT_EQ(read->Span(kFrames - 500, kFrames - 480)->highest, 0.5F);
    EXPECT_FALSE(read->Span(2000, 2010));
}

/// A picture of the whole is the same whether its peaks were read for it or with the file.
TEST_F(Waveforms, OfAPictureShowTheSameAsThoseOfTheWholeFile) {
    const auto whole = Read();
    const auto shown = Read({.width = 2000});
    ASSERT_TRUE(whole && shown);
    for (double frame = 0; frame < kFrames; frame += shown->framesPerPeak) {
        const auto peak = shown->Span(frame, frame + shown->framesPerPeak);
        ASSERT_TRUE(peak);
        EXPECT_TRUE(AreEqual(*peak, *whole->Span(frame, frame + shown->framesPerPeak))) << frame;
    }
}

TEST_F(Waveforms, AreDrawnInTheirClips) {
    const Layout layout = MakeLayout(Playing());
    const std::string without = DrawSvg(layout, {}, {});
    const std::string with = DrawSvg(layout, orvo::ReadWaveforms(layout), {});
    EXPECT_GT(with.size(), without.size() + 2000);
    EXPECT_THAT(with, Not(HasSubstr("missing</text>")));
}

TEST_F(Waveforms, OfACacheAreTheSame) {
    for (const std::optional<double> width : {std::optional<double>(), {400.}, {1600.}, {20000.}}) {
        const auto plain = Read({.width = width});
        ASSERT_TRUE(plain);
        fs::remove_all(Cache());
        for (int i = 0; i < 2; ++i) {
            EXPECT_TRUE(AreEqual(Read({.width = width, .cache = Cache().string()}), plain))
                << width.value_or(0) << ", time " << i;
        }
    }
}

TEST_F(Waveforms, AreKeptInOneFileForEachSound) {
    Read({.cache = Cache().string()});
    Read({.width = 1000, .cache = Cache().string()});
    ASSERT_EQ(Kept().size(), 1u);
    EXPECT_EQ(Kept()[0].extension(), ".peaks");
}

TEST_F(Waveforms, AreNotReadAgainIfTheyAreKept) {
    const auto first = Read({.cache = Cache().string()});
    const auto time = fs::last_write_time(Sound());
    WriteSound(Sound(), kFrames, 1000);
    fs::last_write_time(Sound(), time);
    EXPECT_TRUE(AreEqual(Read({.cache = Cache().string()}), first)) << "as old and as large";
    fs::last_write_time(Sound(), time + std::chrono::seconds(1));
    EXPECT_FLOAT_EQ(Read({.cache = Cache().string()})->Whole()->back().highest, 1000 / 32768.F);
}

TEST_F(Waveforms, OfMediaOfAnotherSizeAreReadAnew) {
    Read({.cache = Cache().string()});
    const auto time = fs::last_write_time(Sound());
    WriteSound(Sound(), kFrames + 80);
    fs::last_write_time(Sound(), time);
    EXPECT_TRUE(AreEqual(Read({.cache = Cache().string()}), Read()));
}

TEST_F(Waveforms, DoNotComeFromADamagedCache) {
    const auto plain = Read();
    Read({.cache = Cache().string()});
    const fs::path kept = Kept().at(0);
    const auto size = fs::file_size(kept);
    const auto damage = [&](std::uintmax_t place) {
        std::fstream file(kept, std::ios::binary | std::ios::in | std::ios::out);
        file.seekp(static_cast<std::streamoff>(place));
        file.put('\x7F');
    };
    for (const std::uintmax_t place : {std::uintmax_t{0}, size / 2, size - 1}) {
        damage(place);
        EXPECT_TRUE(AreEqual(Read({.cache = Cache().string()}), plain)) << place;
    }
    for (const std::uintmax_t left : {std::uintmax_t{0}, std::uintmax_t{80}, size - 1}) {
        fs::resize_file(kept, left);
        EXPECT_TRUE(AreEqual(Read({.cache = Cache().string()}), plain)) << left;
        EXPECT_EQ(fs::file_size(kept), size) << "replaced";
    }
}

TEST_F(Waveforms, AreReadEvenIfTheyCannotBeKept) {
    folder_.Write("kept", "a file");
    EXPECT_TRUE(Read({.cache = Cache().string()}));
}

TEST_F(Waveforms, OfShortMediaAreNotKept) {
    WriteSound(Sound(), 1000);
    EXPECT_TRUE(Read({.cache = Cache().string()}));
    EXPECT_FALSE(fs::exists(Cache()));
}

}  // namespace
