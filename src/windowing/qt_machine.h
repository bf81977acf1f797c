#pragma once

// What a long piece of work asks of the machine, over the system and the toolkit. Interface thread only.

#include "core/platform.h"

#include <map>

class QtMachine final : public Machine {
public:
    VolumeNews askVolume(std::string_view path, std::int32_t longestMs) override;
    bool moveToTrash(std::string_view path) override;
    std::shared_ptr<void> keepAwake(std::string_view why) override;

private:
    struct Asked;

    std::map<std::string, std::shared_ptr<Asked>, std::less<>> asked_; // those that have not answered yet
};
