// gzip by zlib, zstd by its own library.
#include "report/Unpack.h"

#include <zlib.h>
#include <zstd.h>

#include <array>
#include <new>

namespace report {

namespace {

constexpr const char* Damaged = "The packed data is damaged";
constexpr const char* CutShort = "The packed data ends in the middle";
constexpr std::size_t PackedBlock = 64 * 1024;

// What both have in common: packed bytes at hand, and a failure that waits until all before it has been taken.
class Unpacker : public ByteStream {
public:
    explicit Unpacker(ByteStream& tPacked) : m_tPacked(tPacked) {}

    std::size_t Read(std::span<char> tRoom) override {
        std::size_t iMade = 0;
        while (iMade == 0 && !m_pFailure) {
            if (m_tAtHand.empty()) m_tAtHand = std::span(m_sBlock).first(m_tPacked.Read(m_sBlock));
            const bool bEnd = m_tAtHand.empty();
            if (bEnd && !bInside) return 0;
            // At the end too: something may be left that has been taken in and not given out.
            if (!Step(m_tAtHand, tRoom, iMade)) m_pFailure = Damaged;
            if (bEnd && iMade == 0) m_pFailure = CutShort;
        }
        if (iMade == 0) throw InputError(m_pFailure);
        return iMade;
    }

protected:
    // Unpacks from tFrom, which becomes what is left of it, into tRoom. False when the data is damaged.
    virtual bool Step(std::span<char>& tFrom, std::span<char> tRoom, std::size_t& iMade) = 0;

    bool bInside = true;  // a packed piece has begun and not ended

private:
    ByteStream& m_tPacked;
    std::array<char, PackedBlock> m_sBlock{};
    std::span<char> m_tAtHand;
    const char* m_pFailure = nullptr;
};

class GzipStream : public Unpacker {
public:
    explicit GzipStream(ByteStream& tPacked) : Unpacker(tPacked) {
        constexpr int GzipOnly = 16;
        if (::inflateInit2(&m_t, MAX_WBITS + GzipOnly) != Z_OK) throw std::bad_alloc();
    }
    ~GzipStream() override { ::inflateEnd(&m_t); }
    GzipStream(const GzipStream&) = delete;
    GzipStream& operator=(const GzipStream&) = delete;

protected:
    bool Step(std::span<char>& tFrom, std::span<char> tRoom, std::size_t& iMade) override {
        if (!bInside) ::inflateReset(&m_t);
        bInside = true;
        m_t.next_in = reinterpret_cast<Bytef*>(tFrom.data());
        m_t.avail_in = static_cast<uInt>(tFrom.size());
        m_t.next_out = reinterpret_cast<Bytef*>(tRoom.data());
        m_t.avail_out = static_cast<uInt>(tRoom.size());
        const int iResult = ::inflate(&m_t, Z_NO_FLUSH);
        tFrom = tFrom.last(m_t.avail_in);
        iMade = tRoom.size() - m_t.avail_out;
        if (iResult == Z_STREAM_END) bInside = false;
        return iResult == Z_OK || iResult == Z_STREAM_END || iResult == Z_BUF_ERROR;
    }

private:
    z_stream m_t{};
};

class ZstdStream : public Unpacker {
public:
    explicit ZstdStream(ByteStream& tPacked) : Unpacker(tPacked), m_p(::ZSTD_createDStream()) {
        if (!m_p) throw std::bad_alloc();
    }
    ~ZstdStream() override { ::ZSTD_freeDStream(m_p); }
    ZstdStream(const ZstdStream&) = delete;
    ZstdStream& operator=(const ZstdStream&) = delete;

protected:
    bool Step(std::span<char>& tFrom, std::span<char> tRoom, std::size_t& iMade) override {
        ZSTD_inBuffer tIn{tFrom.data(), tFrom.size(), 0};
        ZSTD_outBuffer tOut{tRoom.data(), tRoom.size(), 0};
        const std::size_t iResult = ::ZSTD_decompressStream(m_p, &tOut, &tIn);
        tFrom = tFrom.subspan(tIn.pos);
        iMade = tOut.pos;
        bInside = iResult != 0;
        return ::ZSTD_isError(iResult) == 0;
    }

private:
    ZSTD_DStream* m_p;
};

}  // namespace

std::unique_ptr<ByteStream> UnpackGzip(ByteStream& tPacked) { return std::make_unique<GzipStream>(tPacked); }

std::unique_ptr<ByteStream> UnpackZstd(ByteStream& tPacked) { return std::make_unique<ZstdStream>(tPacked); }

}  // namespace report
