#pragma once

// The open media files and their streams, by handle.
//
// A record outlives its file's closing: an image of the timeline or the clipboard may name a stream again later, and
// then file and stream open anew under their old handles. Interface thread only.

#include "engine/types.h"
#include "twcore/files/answered_within.h"
#include "twcore/media/file_stamp.h"
#include "twcore/media/media_file.h"
#include "twcore/model/handle_counter.h"
#include "twcore/model/stream_catalogue.h"
#include "twcore/render/plan.h"

#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace twcore {

class FileRegistry final : public StreamCatalogue {
public:
    explicit FileRegistry(HandleCounter& handles) : handles_(handles) {}

    struct Stream {
        engine::Handle handle = 0;
        engine::Handle file = 0;
        bool isPicture = false;
        bool isOpen = false;
        std::int32_t durationMs = 0;
    };

    /// Tries the file, or answers what an earlier try found as long as the file has not changed since.
    Trial tryFile(const std::string& path);

    /// Begins to try a file that will be asked for soon. Only the last two of them count.
    void lookAhead(const std::string& path);

    /// 0 when the file cannot be opened.
    engine::Handle openFile(const std::string& path);
    /// False when there is no such open file. Its streams stay until each is closed.
    bool closeFile(engine::Handle file);
    /// Path as it was opened; nullptr when there is no such file, or it is closed and the last of its streams too.
    const std::string* pathOf(engine::Handle file) const;
    /// 0 when no stream is open.
    engine::Handle firstOpenStream(engine::Handle file) const;
    /// 0 when there is no such stream.
    engine::Handle openStream(engine::Handle file, std::int16_t index);
    bool closeStream(engine::Handle stream);
    /// nullptr when there is none or it is closed.
    const Stream* findOpen(engine::Handle stream) const;
    MediaFilePtr mediaOf(engine::Handle file) const;
    /// The open files in the order in which they were opened.
    std::vector<engine::Handle> openFiles() const { return order_; }
    /// The stream of a file that is its picture, or its sound; opened if it is not. 0 when it has none.
    engine::Handle streamOfKind(engine::Handle file, bool picture);
    /// What a stream handle plays, whether it is open or not.
    StreamTarget targetOf(engine::Handle stream) const;

    bool acquire(engine::Handle stream) override;
    std::int32_t durationMs(engine::Handle stream) const override;

private:
    struct File {
        MediaFilePtr media;
        bool isOpen = false;
        std::vector<engine::Handle> streams; // by index, 0 while never opened
    };
    struct Tried {
        std::string path;
        FileStamp stamp;
        Trial trial;
    };

    struct Ahead {
        std::string path;
        UnderWay<Tried> look;
    };

    static Tried lookAt(const std::string& path);
    std::optional<Tried> takeAhead(const std::string& path);
    const Trial& keep(Tried tried);
    bool hasOpenStream(const File& file) const;
    void reopen(engine::Handle file);

    HandleCounter& handles_;
    std::map<engine::Handle, File> files_;
    std::map<engine::Handle, Stream> streams_;
    std::vector<engine::Handle> order_;
    std::deque<Tried> tried_;
    std::deque<Ahead> ahead_;
};

} // namespace twcore
