#include "twcore/capture/test_devices.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstring>
#include <numbers>
#include <thread>

namespace twcore {

namespace {

// Eight by five cells in the middle of the picture: a reference, the number and its check sum, from the highest bit on.
constexpr int kColumns = 8;
constexpr int kRows = 5;
constexpr std::uint8_t kReference = 0xAC;
constexpr std::uint8_t kDark = 20;
constexpr std::uint8_t kBright = 235;

std::uint64_t codeOf(int number)
{
    const auto told = static_cast<std::uint32_t>(number) & 0xFFFFu;
    std::uint32_t check = 0xFFFF;
    for (int bit = 15; bit >= 0; --bit) {
        const bool carry = ((check >> 15 ^ told >> bit) & 1u) != 0;
        check = (check << 1 & 0xFFFFu) ^ (carry ? 0x1021u : 0u);
    }
    return std::uint64_t{kReference} << 32 | std::uint64_t{told} << 16 | check;
}

/// What people set on the test camera; read by its reader's thread.
struct TestSettings {
    std::atomic<std::int32_t> brightness = 50;
    std::atomic<std::int32_t> isMirrored = 0;
};

class TestPictures final : public OpenCamera {
public:
    TestPictures(PictureSize size, int rate, int leavesAfter, std::shared_ptr<const TestSettings> settings)
        : size_(size), rate_(rate), leavesAfter_(leavesAfter), settings_(std::move(settings)), start_(captureNow())
    {}

    PictureSize size() const override { return size_; }
    AVRational rate() const override { return {rate_, 1}; }

    DeviceNews read(SharedFrame& picture, CaptureTime& taken) override
    {
        if (leavesAfter_ >= 0 && number_ >= leavesAfter_) {
            return DeviceNews::kGone;
        }
        constexpr CaptureTime kLongest = kCaptureSecond / 20;
        const CaptureTime due = start_ + kCaptureSecond * number_ / rate_;
        const CaptureTime wait = due - captureNow();
        std::this_thread::sleep_for(std::chrono::microseconds(std::clamp<CaptureTime>(wait, 0, kLongest)));
        if (wait > kLongest) {
            return DeviceNews::kNothing;
        }
        picture = drawn();
        taken = due;
        ++number_;
        return DeviceNews::kRead;
    }

private:
    SharedFrame drawn() const;
    void drawGround(AVFrame& frame) const;
    void drawCode(AVFrame& frame) const;

    PictureSize size_;
    int rate_;
    int leavesAfter_;
    std::shared_ptr<const TestSettings> settings_;
    CaptureTime start_;
    int number_ = 0;
};

SharedFrame TestPictures::drawn() const
{
    FramePtr frame = makeFrame();
    frame->format = AV_PIX_FMT_YUV420P;
    frame->width = size_.width;
    frame->height = size_.height;
    frame->color_range = AVCOL_RANGE_MPEG;
    if (av_frame_get_buffer(frame.get(), 0) < 0) {
        throw std::bad_alloc();
    }
    drawGround(*frame);
    drawCode(*frame);
    return shareFrame(std::move(frame));
}

/// Slanted waves that go through the picture once in three seconds, never dark; a flash at each full second.
void TestPictures::drawGround(AVFrame& frame) const
{
    constexpr int kSteps = 256;
    static const auto wave = [] {
        std::array<int, kSteps> heights{};
        for (std::size_t i = 0; i < kSteps; ++i) {
            heights[i] = static_cast<int>(std::lround(40 * std::sin(2 * std::numbers::pi * double(i) / kSteps)));
        }
        return heights;
    }();
    const int turn = number_ * kSteps / (3 * rate_);
    const int flash = number_ % rate_ == 0 ? 30 : 0;
    const int ground = 100 + settings_->brightness + flash - 25;
    std::array<std::uint8_t, 2 * kSteps> row{};
    for (std::size_t i = 0; i < row.size(); ++i) {
        row[i] = static_cast<std::uint8_t>(std::clamp(ground + wave[i % kSteps], 60, 230));
    }
    const bool isMirrored = settings_->isMirrored != 0;
    for (int y = 0; y < size_.height; ++y) {
        auto* const line = frame.data[0] + std::ptrdiff_t{y} * frame.linesize[0];
        const int shift = y / 2 + turn;
        for (int x = 0; x < size_.width; ++x) {
            const int along = isMirrored ? size_.width - 1 - x : x;
            line[x] = row[static_cast<std::size_t>((along + shift) & (kSteps - 1))];
        }
    }
    for (int plane = 1; plane < 3; ++plane) {
        for (int y = 0; y < (size_.height + 1) / 2; ++y) {
            const auto slope = static_cast<std::size_t>((2 * y + plane * 85 + turn) & (kSteps - 1));
            std::memset(frame.data[plane] + std::ptrdiff_t{y} * frame.linesize[plane], 128 + wave[slope],
                        static_cast<std::size_t>((size_.width + 1) / 2));
        }
    }
}

void TestPictures::drawCode(AVFrame& frame) const
{
    const auto across = [&](double share) { return static_cast<int>(std::lround(share * size_.width)); };
    const auto down = [&](double share) { return static_cast<int>(std::lround(share * size_.height)); };
    const auto fill = [&](double left, double top, double right, double bottom, std::uint8_t level) {
        for (int y = down(top); y < down(bottom); ++y) {
            std::memset(frame.data[0] + std::ptrdiff_t{y} * frame.linesize[0] + across(left), level,
                        static_cast<std::size_t>(across(right) - across(left)));
        }
        for (int plane = 1; plane < 3; ++plane) { // grey, so that the bars read the same in every format
            for (int y = down(top) / 2; y < (down(bottom) + 1) / 2; ++y) {
                std::memset(frame.data[plane] + std::ptrdiff_t{y} * frame.linesize[plane] + across(left) / 2, 128,
                            static_cast<std::size_t>((across(right) + 1) / 2 - across(left) / 2));
            }
        }
    };
    constexpr double kLeft = 0.1, kTop = 0.2, kWidth = 0.8, kHeight = 0.6, kRim = 0.04;
    fill(kLeft - kRim, kTop - kRim, kLeft + kWidth + kRim, kTop + kHeight + kRim, kBright);
    const std::uint64_t code = codeOf(number_);
    for (int cell = 0; cell < kColumns * kRows; ++cell) {
        const double left = kLeft + kWidth * (cell % kColumns) / kColumns;
        const double top = kTop + kHeight * (cell / kColumns) / kRows; // NOLINT(bugprone-integer-division): whole rows
        const bool isBright = (code >> (kColumns * kRows - 1 - cell) & 1u) != 0;
        fill(left, top, left + kWidth / kColumns, top + kHeight / kRows, isBright ? kBright : kDark);
    }
}

class TestCamera final : public Camera {
public:
    TestCamera(bool isBusy, int leavesAfter) : isBusy_(isBusy), leavesAfter_(leavesAfter) {}

    std::unique_ptr<OpenCamera> open() const override
    {
        return isBusy_ ? nullptr : std::make_unique<TestPictures>(kSizes[size_], rate_, leavesAfter_, settings_);
    }

    DeviceControls controls() override
    {
        return {{.id = kBrightness, .name = "Brightness", .most = 100, .normal = 50, .value = settings_->brightness},
                {.id = kMirror,
                 .name = "Mirror",
                 .kind = engine::DeviceControl::Kind::kSwitch,
                 .value = settings_->isMirrored}};
    }

    void setControl(std::uint32_t id, std::int32_t value) override
    {
        (id == kBrightness ? settings_->brightness : settings_->isMirrored) = value;
    }

    DeviceControls formats() override
    {
        engine::DeviceControl size{.id = kSize,
                                   .name = "Size",
                                   .kind = engine::DeviceControl::Kind::kChoice,
                                   .normal = 1,
                                   .value = static_cast<std::int32_t>(size_)};
        for (std::size_t i = 0; i < kSizes.size(); ++i) {
            size.choices.push_back({static_cast<std::int32_t>(i),
                                    std::to_string(kSizes[i].width) + " x " + std::to_string(kSizes[i].height)});
        }
        return {size, {.id = kRate, .name = "Frames a second", .least = 5, .most = 60, .normal = 30, .value = rate_}};
    }

    void setFormats(const DeviceControls& formats) override
    {
        for (const auto& format : formats) {
            if (format.id == kSize && format.value >= 0 && std::size_t(format.value) < kSizes.size()) {
                size_ = static_cast<std::size_t>(format.value);
            } else if (format.id == kRate) {
                rate_ = std::clamp(format.value, 5, 60);
            }
        }
    }

private:
    enum : std::uint32_t { kBrightness, kMirror, kSize, kRate };
    static constexpr std::array<PictureSize, 4> kSizes{{{320, 240}, {640, 480}, {1280, 720}, {1920, 1080}}};

    bool isBusy_;
    int leavesAfter_;
    std::size_t size_ = 1;
    int rate_ = 30;
    std::shared_ptr<TestSettings> settings_ = std::make_shared<TestSettings>();
};

class TestSound final : public OpenMicrophone {
public:
    explicit TestSound(int rate) : rate_(rate), start_(captureNow()) {}

    int rate() const override { return rate_; }

    DeviceNews read(std::vector<float>& samples, CaptureTime& taken) override
    {
        const std::int64_t block = rate_ / 100;
        taken = start_ + kCaptureSecond * sample_ / rate_;
        // A block is there when its last sample has been heard.
        const CaptureTime wait = taken + kCaptureSecond * block / rate_ - captureNow();
        std::this_thread::sleep_for(std::chrono::microseconds(std::max<CaptureTime>(0, wait)));
        samples.resize(static_cast<std::size_t>(block) * 2);
        for (std::size_t i = 0; i < samples.size(); i += 2) {
            const double at = double(sample_++) / rate_;
            const bool isMark = at - std::floor(at) < 0.05;
            const double heard = 0.2 * std::sin(2 * std::numbers::pi * (isMark ? 1760 : 440) * at);
            samples[i] = samples[i + 1] = static_cast<float>(heard);
        }
        return DeviceNews::kRead;
    }

private:
    int rate_;
    CaptureTime start_;
    std::int64_t sample_ = 0;
};

class TestMicrophone final : public Microphone {
public:
    explicit TestMicrophone(bool isDeaf) : isDeaf_(isDeaf) {}
    std::unique_ptr<OpenMicrophone> open(int rate) const override
    {
        return isDeaf_ ? nullptr : std::make_unique<TestSound>(rate);
    }

private:
    bool isDeaf_;
};

} // namespace

void addTestDevices(DeviceList& devices, std::string_view wish)
{
    bool camera = false, microphone = false, busy = false, deaf = false;
    int leavesAfter = -1;
    while (!wish.empty()) {
        const std::string_view word = wish.substr(0, wish.find(','));
        wish.remove_prefix(std::min(wish.size(), word.size() + 1));
        constexpr std::string_view kLeaves = "leaves=";
        camera = camera || word == "camera";
        microphone = microphone || word == "microphone";
        busy = busy || word == "busy";
        deaf = deaf || word == "deaf";
        if (word.starts_with(kLeaves)) {
            std::from_chars(word.data() + kLeaves.size(), word.data() + word.size(), leavesAfter);
        }
    }
    if (camera || busy || leavesAfter >= 0) {
        devices.cameras.insert(devices.cameras.begin(),
                               {"Test Camera", false, std::make_shared<TestCamera>(busy, leavesAfter)});
    }
    if (microphone || deaf) {
        devices.microphones.insert(devices.microphones.begin(),
                                   {"Test Microphone", std::make_shared<TestMicrophone>(deaf)});
    }
}

} // namespace twcore
