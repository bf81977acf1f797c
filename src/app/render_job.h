#pragma once

// One rendering: the inputs laid on the tracks, the save, the finished movie under its name.

#include "app/render_words.h"

#include <stdexcept>
#include <string>

namespace app {

/// A run that failed. The text is a sentence for people: the cause, the path, the next step.
struct RenderFailed : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct RenderResult {
    long long frames = 0;
    long long framesCopied = 0; // of those, as their medium has them
    long long samples = 0;
    double movieSeconds = 0;
    double wallSeconds = 0;
};

/// Renders. An output that fails or is interrupted never stands under its final name. Raises `RenderFailed`,
/// `disk::Refused` or `engine::RuntimeError` with a text for people. `interrupted` is asked all the time.
RenderResult render(const RenderWords& words, const volatile int& interrupted);

/// As one line of JSON.
std::string asJson(const RenderWords& words, const RenderResult& result);

} // namespace app
