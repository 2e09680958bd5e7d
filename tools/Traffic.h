// What the receiver and the GPS say, line by line in the order of simulated time: every target reports when its
// interval has passed, some reports are lost, each message is followed by the board's signal sentence, and once a
// second the GPS tells its position.
//
// Time goes in slots, 2,250 to the minute, and two channels; a station sends on them in turn. A report falls due at
// its nominal time, give or take a tenth of the interval, and takes the next slot that is free on its channel.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "platform/runtime/DateTime.h"
#include "tools/AisEncoding.h"
#include "tools/Harbour.h"
#include "tools/Random.h"
#include "tools/ReceptionRule.h"
#include "tools/SlotQueue.h"

namespace simulator {

struct TrafficOptions {
    std::uint64_t lSeed = 1;
    int iTargets = 120;
    double dMissingPercent = 5.0;  // reports that the receiver does not hear
    double dDamagedPercent = 0.0;  // lines that arrive with a fault
    bool bSignal = true;           // $PNMLS after each message
    bool bGps = true;              // GLL and RMC each second
    runtime::DateTime dtStart;     // UTC
    double dFall = 16;             // steps of the board that a tenfold distance costs; twenty dB are some ten
    HarbourOptions tHarbour{};
    ReceptionRule tRule{};
    std::uint64_t lChance = 0;  // with the seed: of what the receiver loses
};

// The truth of a message: what went out, heard or not. The level is what the receiver would tell if its steps were fine
// and had no end.
struct SentMessage {
    std::int64_t lMilliseconds = 0;  // since the start
    std::uint32_t lMmsi = 0;
    int iType = 0;
    char sChannel = 'A';
    bool bFix = false;  // the sender knows its place
    double dMiles = 0;  // from us
    double dBearing = 0;
    double dDbm = 0;
    bool bHeard = false;
};

struct TrafficLine {
    std::int64_t lMilliseconds = 0;  // since the start
    bool bGps = false;               // which of the two devices says it
    std::string sText;               // without line end
};

inline constexpr int DefaultInterval = 3;

class Traffic {
public:
    explicit Traffic(const TrafficOptions& tOptions);

    // The next line; valid until the next call. There is always one, unless there are neither targets nor a GPS.
    const TrafficLine& Next();
    // 'A' or 'B': only this channel is heard from now on; 'S': both.
    void SetChannel(char sChannel) { m_sChannel = sChannel; }
    // To be told of every message that is sent, also those that make no line.
    void TellSent(std::function<void(const SentMessage&)> Sent) { m_Sent = std::move(Sent); }
    // The third figure of the signal sentence.
    void SetInterval(int iInterval) { m_iInterval = iInterval; }

private:
    // What the simulation keeps of a target besides its way.
    struct Sender {
        double dNominal = 0;  // time of the next position report before the scatter
        double dInterval = 0;
        std::uint32_t lPlan = 0;
        bool bSecondChannel = false;  // of the next message
        bool bStaticOnSecond = false;
    };

    void Fill();
    void Add(double dTime, int iTarget, Say eSay, std::uint32_t lPlan = 0);
    void PlanFirst(int i);
    void PlanPosition(int i);
    void PlanNext(const Event& t);
    void Steer(int i, double dTime);
    bool IsDropped(const Event& t) const;
    bool OnSecondChannel(const Event& t) const;
    Turn TurnOf(const Event& t) const;
    void Transmit(const Event& t);
    void Encode(int i, Say eSay, double dTime);
    void EncodeReport(const Target& t, double dTime);
    void AskSomebody(const Target& t, double dTime);
    void Hear(const Target& t, double dTime, char sChannel);
    SentMessage SentFrom(const Target& t, double dTime, char sChannel) const;
    double SignalOf(const Target& t, double dTime) const;
    void SayGps(std::int64_t lSecond);
    void Put(std::int64_t lMilliseconds, bool bGps, std::string& sText);
    Motion MotionOf(const Target& t, double dTime) const;

    TrafficOptions m_tOptions;
    Harbour m_tHarbour;
    Random m_tChance;     // of the senders
    Random m_tReception;  // of what is lost or damaged: does not change what is sent
    std::vector<Sender> m_tSenders;
    std::vector<int> m_iShips;  // the targets that can be asked
    SlotQueue m_tQueue;
    std::int64_t m_lSlot = 0;  // now
    std::int64_t m_lLastSlot[2] = {-1, -1};
    std::int64_t m_lNextGps = 0;
    BitWriter m_tBits;
    std::vector<TrafficLine> m_tLines;  // made and not yet taken: m_iTaken up to m_iMade
    std::size_t m_iMade = 0;
    std::size_t m_iTaken = 0;
    int m_iSequence = 0;
    int m_iInterval = DefaultInterval;
    char m_sChannel = 'S';
    std::function<void(const SentMessage&)> m_Sent;
};

}  // namespace simulator
