#include "twcore/save/jpeg_encoder.h"

#include <algorithm>
#include <array>
#include <csetjmp>
#include <cstdio> // jpeglib.h wants it first
#include <cstdlib>
#include <cstring>
#include <jpeglib.h>
#include <new>
#include <stdexcept>

namespace twcore {

namespace {

constexpr int kBlock = 16; // pixels of a block of halved colour
constexpr unsigned kDcQuantiser = 8;

// The default intra matrix of MPEG-1, line by line.
constexpr std::array<unsigned, 64> kMatrix{8,  16, 19, 22, 26, 27, 29, 34, 16, 16, 22, 24, 27, 29, 34, 37,
                                           19, 22, 26, 27, 29, 34, 34, 38, 22, 22, 26, 27, 29, 34, 37, 40,
                                           22, 26, 27, 29, 32, 35, 40, 48, 26, 27, 29, 32, 35, 40, 48, 58,
                                           26, 27, 29, 34, 38, 46, 56, 69, 27, 29, 35, 38, 46, 56, 69, 83};

struct ErrorManager {
    jpeg_error_mgr base; // first: the library hands back a pointer to it
    std::jmp_buf escape;
};

[[noreturn]] void onError(j_common_ptr info) { std::longjmp(reinterpret_cast<ErrorManager*>(info->err)->escape, 1); }

void onMessage(j_common_ptr) {}

int wholeBlocks(int side) { return (side + kBlock - 1) / kBlock * kBlock; }

} // namespace

struct JpegEncoder::State {
    jpeg_compress_struct info{};
    ErrorManager errors{};
    unsigned char* bytes = nullptr; // grown by the library with malloc
    unsigned long capacity = 0;
    unsigned long size = 0;
};

JpegEncoder::JpegEncoder(int width, int height, int quantiser)
    : width_(width), height_(height), state_(std::make_unique<State>())
{
    auto& info = state_->info;
    info.err = jpeg_std_error(&state_->errors.base);
    state_->errors.base.error_exit = onError;
    state_->errors.base.output_message = onMessage;
    if (setjmp(state_->errors.escape) != 0) {
        throw std::bad_alloc();
    }
    jpeg_create_compress(&info);
    info.image_width = static_cast<JDIMENSION>(width);
    info.image_height = static_cast<JDIMENSION>(height);
    info.input_components = 3;
    info.in_color_space = JCS_YCbCr;
    jpeg_set_defaults(&info);
    jpeg_set_colorspace(&info, JCS_YCbCr);
    info.raw_data_in = TRUE;
    info.dct_method = JDCT_ISLOW;
    info.optimize_coding = FALSE; // 7 in 100 smaller, but half as fast

    std::array<unsigned, 64> table{};
    for (std::size_t i = 0; i < table.size(); ++i) {
        table[i] = std::clamp(kMatrix[i] * static_cast<unsigned>(quantiser) >> 3, 1u, 255u);
    }
    table[0] = kDcQuantiser;
    jpeg_add_quant_table(&info, 0, table.data(), 100, TRUE);
    jpeg_add_quant_table(&info, 1, table.data(), 100, TRUE);
    state_->capacity = static_cast<unsigned long>(width) * static_cast<unsigned long>(height) + 65536;
    state_->bytes = static_cast<unsigned char*>(std::malloc(state_->capacity));
    if (state_->bytes == nullptr) {
        jpeg_destroy_compress(&info);
        throw std::bad_alloc();
    }
}

JpegEncoder::~JpegEncoder()
{
    jpeg_destroy_compress(&state_->info);
    std::free(state_->bytes);
}

std::span<const std::uint8_t> JpegEncoder::encode(const JpegPicture& picture)
{
    JpegPicture whole = picture;
    if (width_ % kBlock != 0) {
        // What lies beside the picture must not be chance: the last pixel of each line goes on.
        const int lumaStride = wholeBlocks(width_);
        padded_.resize(static_cast<std::size_t>(lumaStride) * static_cast<std::size_t>(height_ + 1) * 2);
        std::uint8_t* target = padded_.data();
        for (int i = 0; i < 3; ++i) {
            const int width = i == 0 ? width_ : (width_ + 1) / 2;
            const int height = i == 0 ? height_ : (height_ + 1) / 2;
            whole.planes[i] = target;
            whole.strides[i] = i == 0 ? lumaStride : lumaStride / 2;
            for (int y = 0; y < height; ++y, target += whole.strides[i]) {
                const auto* const line = picture.planes[i] + std::ptrdiff_t{y} * picture.strides[i];
                std::copy_n(line, width, target);
                std::fill(target + width, target + whole.strides[i], line[width - 1]);
            }
        }
    }
    if (!compress(whole)) {
        throw std::runtime_error("Motion JPEG failed.");
    }
    return {state_->bytes, state_->size};
}

bool JpegEncoder::compress(const JpegPicture& picture)
{
    auto& info = state_->info;
    auto* const oldBytes = state_->bytes;
    state_->size = state_->capacity;
    if (setjmp(state_->errors.escape) != 0) {
        jpeg_abort_compress(&info);
        return false;
    }
    jpeg_mem_dest(&info, &state_->bytes, &state_->size);
    jpeg_start_compress(&info, TRUE);
    std::array<JSAMPROW, kBlock> luma{};
    std::array<std::array<JSAMPROW, kBlock / 2>, 2> chroma{};
    JSAMPARRAY planes[3] = {luma.data(), chroma[0].data(), chroma[1].data()};
    const auto lineOf = [&](int plane, int y, int height) {
        return const_cast<JSAMPROW>(picture.planes[plane]
                                    + std::ptrdiff_t{std::min(y, height - 1)} * picture.strides[plane]);
    };
    while (info.next_scanline < info.image_height) {
        const int top = static_cast<int>(info.next_scanline);
        for (int y = 0; y < kBlock; ++y) {
            luma[static_cast<std::size_t>(y)] = lineOf(0, top + y, height_);
        }
        for (int y = 0; y < kBlock / 2; ++y) {
            for (int plane = 1; plane < 3; ++plane) {
                chroma[static_cast<std::size_t>(plane - 1)][static_cast<std::size_t>(y)] =
                    lineOf(plane, top / 2 + y, (height_ + 1) / 2);
            }
        }
        jpeg_write_raw_data(&info, planes, kBlock);
    }
    jpeg_finish_compress(&info);
    if (state_->bytes != oldBytes) {
        // The library has put a larger buffer in place and leaves the old one to us.
        std::free(oldBytes);
        state_->capacity = state_->size;
    }
    return true;
}

} // namespace twcore
