#pragma once

// What every operation of the engine returns beside its out values.

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

namespace engine {

/// A result code: the top bit set means that the call failed and that its out values mean nothing.
/// An item that does not exist, or does not fit, is no failure: that is the ok out value.
class [[nodiscard]] Status {
public:
    Status() noexcept = default;
    explicit Status(std::uint32_t code) noexcept : code_(code) {}
    /// With a text for people: what happened, to which path, and what to do about it.
    Status(std::uint32_t code, std::string text)
        : code_(code), text_(std::make_shared<const std::string>(std::move(text)))
    {}

    bool failed() const noexcept { return (code_ & 0x80000000u) != 0; }
    std::uint32_t code() const noexcept { return code_; }
    /// Empty when the code says it all.
    std::string text() const { return text_ ? *text_ : std::string(); }

    friend bool operator==(const Status& a, const Status& b) noexcept { return a.code_ == b.code_; }

private:
    std::uint32_t code_ = 0;
    std::shared_ptr<const std::string> text_;
};

inline const Status kDone{0};
inline const Status kNotImplemented{0x80004001};
inline const Status kNoInterface{0x80004002};
inline const Status kFailed{0x80004005};
inline const Status kUnexpected{0x8000FFFF};
inline const Status kAccessDenied{0x80070005};
inline const Status kOutOfMemory{0x8007000E};
inline const Status kInvalidArgument{0x80070057};
inline const Status kDiskFull{0x80070070};

/// A failure that is one of the program's own error numbers carries it in its low word.
inline constexpr std::uint32_t kNumberedFailure = 0x800A0000;

/// Results of trying a media file (`ITWCoreRoot::GetFileError`).
namespace media_error {
inline constexpr std::uint32_t kNone = 0;
inline constexpr std::uint32_t kNotFound = 0x80040216;      // no such file
inline constexpr std::uint32_t kNoDecoder = 0x80040218;     // nothing in it can be decoded for want of a decoder
inline constexpr std::uint32_t kInvalidFormat = 0x8004022F; // a known format with a broken header, or empty of media
inline constexpr std::uint32_t kUnknownFormat = 0x80040240; // no format that is known
inline constexpr std::uint32_t kCannotLoad = 0x80040241;    // it cannot be read, or does not answer in time
inline constexpr std::uint32_t kIsFolder = 0x8007010B;      // no file, but a folder
inline constexpr std::uint32_t kPictureNotRendered = 0x00040257; // its sound can be decoded, its picture cannot
inline constexpr std::uint32_t kSoundNotRendered = 0x00040258;   // its picture can be decoded, its sound cannot
inline constexpr std::uint32_t kInvalidArgument = 0x80070057;    // no path at all
} // namespace media_error

} // namespace engine
