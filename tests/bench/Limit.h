// The yardstick beside the window's burst: one plain loop over a record file that keeps what the window keeps of it. It
// stamps, finds the line ends, tests the checksums, splits and de-armours the messages, puts together those of several
// sentences, counts them by type, keeps the list of ships with the second in which each was last heard, ties the signal
// levels to their message, and keeps the newest lines and reports. It makes no texts, sorts nothing, shows nothing and
// leaves the position sentences alone. Nothing of the program is used here, so equal totals mean something.
//
// It takes what the simulator and a receiver write: lines ended by CR LF, numbers of plain digits. Texts are views
// into the file.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

namespace bench {

inline constexpr std::size_t Block = 16;  // payload characters that are de-armoured at a time

struct LimitReport {
    std::array<std::uint8_t, 24> iValues;  // six bits each, the first is the type
    std::int32_t lMmsi;
    std::int32_t lSecond;  // of the day, of the line that completed it
    std::int32_t lLast;    // seconds since the ship's message before, 0 for its first; negative across midnight
    std::string_view sChannel;
    std::string_view sSignal, sThreshold, sInterval;  // empty where no levels followed
};

// The ships heard and the second of the day in which each was last heard: a table of twice as many places at least,
// where a ship stands at the place of its number or the next free one.
class LimitShips {
public:
    // Seconds since the ship was last heard, 0 when it is new.
    std::int32_t Heard(std::int32_t lMmsi, std::int32_t lSecond);
    std::int64_t Count() const { return m_lCount; }

private:
    static constexpr std::int32_t Nobody = -1;
    struct Place {
        std::int32_t lMmsi = Nobody;
        std::int32_t lSecond = 0;
    };

    Place& PlaceOf(std::int32_t lMmsi);
    void Grow();

    std::vector<Place> m_tPlaces = std::vector<Place>(1024);
    std::int64_t m_lCount = 0;
};

class Limit {
public:
    static constexpr std::size_t LinesKept = 101;
    static constexpr std::size_t ReportsKept = 256;
    static constexpr std::size_t Types = 32;

    // Takes the whole file in, up to the first line that has no date and time. The file must outlive this object.
    void Read(std::string_view sFile);

    std::array<std::int64_t, Types + 1> lCounts{};  // by message type, element 0 is not used
    LimitShips tShips;
    std::int64_t lReports = 0;                    // all there were
    std::vector<std::string_view> Lines() const;  // the newest, oldest first
    std::vector<LimitReport> Reports() const;     // the newest, oldest first

private:
    static constexpr std::size_t LongestPayload = 512;  // of all its sentences

    bool ReadStamp(std::string_view sLine);
    void TakeSentence(std::string_view sLine);
    void TakeMessage(std::string_view sLine);
    void TakeLevels(std::string_view sLine);
    void KeepLine(std::string_view sLine);
    void KeepReport(std::string_view sChannel);

    const char* m_pFileEnd = nullptr;
    std::string_view m_sStamp;
    std::int32_t m_lSecond = 0;
    std::array<std::uint8_t, LongestPayload + Block> m_iValues{};  // of the message that is being put together
    std::size_t m_iHeld = 0;
    bool m_bAfterMessage = false;
    std::array<std::string_view, LinesKept> m_sLines;  // rings
    std::array<LimitReport, ReportsKept> m_tReports{};
    std::size_t m_iNextLine = 0;
    std::size_t m_iLines = 0;
};

}  // namespace bench
