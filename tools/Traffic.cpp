// See Traffic.h.
#include "tools/Traffic.h"

#include <algorithm>
#include <cmath>

#include "tools/DeviceSentences.h"

namespace simulator {

namespace {

constexpr double SlotSeconds = 60.0 / 2250.0;
constexpr double Scatter = 0.1;          // of the interval, to either side
constexpr double StaticSeconds = 360.0;  // static and voyage data
constexpr double ManageSeconds = 60.0;   // data link management, of each base station
constexpr double AskSeconds = 45.0;      // interrogation, of each base station
constexpr double TimeSeconds = 600.0;    // a ship's answer to a question for the time
constexpr double AnswerSeconds = 1.5;    // after an interrogation

constexpr int WeakestSignal = 15;
constexpr int StrongestSignal = 45;
constexpr int ThresholdLow = 15;
constexpr int ThresholdHigh = 18;
constexpr int ClassBWeaker = 4;  // two watts instead of twelve and a half

constexpr int UnderWay = 0;  // navigational statuses
constexpr int AtAnchor = 1;
constexpr int Moored = 5;

std::int64_t SlotOf(double dTime) { return static_cast<std::int64_t>(std::floor(dTime / SlotSeconds)); }
double TimeOf(std::int64_t lSlot) { return static_cast<double>(lSlot) * SlotSeconds; }
std::int64_t MillisecondsOf(std::int64_t lSlot) { return lSlot * 80 / 3; }

Identity IdentityOf(const Target& t) { return {t.lMmsi, t.lImo, t.sName, t.sCallSign, t.sDestination, t.tHull}; }

bool IsShip(const Target& t) { return t.eStation == Station::ClassA || t.eStation == Station::ClassB; }

// Ships that turn or lie still send type 3, ships under orders type 2, the others type 1.
int PositionType(const Target& t) {
    if (t.bAssigned) return 2;
    return t.bMoored || t.dTurn != 0.0 ? 3 : 1;
}

}  // namespace

Traffic::Traffic(const TrafficOptions& tOptions)
    : m_tOptions(tOptions),
      m_tHarbour(tOptions.lSeed, tOptions.iTargets, tOptions.tHarbour),
      m_tChance(tOptions.lSeed ^ 0x5452414646494331ULL),
      m_tReception(tOptions.lSeed ^ 0x4845415244313233ULL ^ tOptions.lChance * 0xD1342543DE82EF95ULL),
      m_tSenders(static_cast<std::size_t>(m_tHarbour.Count())) {
    m_tLines.resize(4);
    for (int i = 0; i < m_tHarbour.Count(); ++i) {
        if (IsShip(m_tHarbour.At(i))) m_iShips.push_back(i);
    }
    for (int i = 0; i < m_tHarbour.Count(); ++i) PlanFirst(i);
}

const TrafficLine& Traffic::Next() {
    while (m_iTaken == m_iMade) Fill();
    return m_tLines[m_iTaken++];
}

// Makes the lines of the next second of the GPS or of the next message, whichever is earlier. A message that is not
// heard makes none.
void Traffic::Fill() {
    m_iMade = 0;
    m_iTaken = 0;
    const bool bNone = m_tQueue.Empty();
    if (m_tOptions.bGps && (bNone || m_lNextGps * 1000 <= MillisecondsOf(m_tQueue.Slot()))) {
        SayGps(m_lNextGps++);
        return;
    }
    if (bNone) return;
    m_lSlot = m_tQueue.Slot();
    const auto tTaken = m_tQueue.Next([this](const Event& t) { return TurnOf(t); });
    if (!tTaken || IsDropped(tTaken->t)) return;
    if (tTaken->t.eSay == Say::Steer) {
        Steer(tTaken->t.iTarget, TimeOf(m_lSlot));
        return;
    }
    if (!tTaken->bLate) Transmit(tTaken->t);
    PlanNext(tTaken->t);
}

void Traffic::Add(double dTime, int iTarget, Say eSay, std::uint32_t lPlan) {
    m_tQueue.Add(SlotOf(dTime), {iTarget, eSay, lPlan});
}

void Traffic::PlanFirst(int i) {
    const Target& t = m_tHarbour.At(i);
    Sender& tSender = m_tSenders[static_cast<std::size_t>(i)];
    tSender.bSecondChannel = m_tChance.Percent(50);
    tSender.dInterval = ReportingSeconds(t);
    tSender.dNominal = m_tChance.Between(0, tSender.dInterval);
    Add(tSender.dNominal, i, Say::Position, tSender.lPlan);
    if (t.eStation == Station::Aid) return;
    if (t.eStation == Station::Base) {
        Add(m_tChance.Between(0, ManageSeconds), i, Say::Manage);
        if (!m_iShips.empty()) Add(m_tChance.Between(0, AskSeconds), i, Say::Ask);
        return;
    }
    Add(t.dLegEnd, i, Say::Steer);
    Add(m_tChance.Between(0, StaticSeconds), i, Say::Static);
    if (t.eStation == Station::ClassA && i % 7 == 0) Add(m_tChance.Between(0, TimeSeconds), i, Say::Time);
}

// The next position report, from the nominal time and the interval in force.
void Traffic::PlanPosition(int i) {
    Sender& t = m_tSenders[static_cast<std::size_t>(i)];
    const double dScatter = t.dInterval * Scatter;
    Add(std::max(0.0, t.dNominal + m_tChance.Between(-dScatter, dScatter)), i, Say::Position, t.lPlan);
}

void Traffic::PlanNext(const Event& t) {
    const double dTime = TimeOf(m_lSlot);
    switch (t.eSay) {
        case Say::Position: {
            Sender& tSender = m_tSenders[static_cast<std::size_t>(t.iTarget)];
            tSender.dNominal += tSender.dInterval;
            PlanPosition(t.iTarget);
            break;
        }
        case Say::Static: {
            const Target& tTarget = m_tHarbour.At(t.iTarget);
            if (t.lPlan != 0) break;  // an answer: the regular ones go on by themselves
            Add(dTime + StaticSeconds, t.iTarget, Say::Static);
            if (tTarget.eStation == Station::ClassB && !tTarget.bExtended) Add(dTime + 1.0, t.iTarget, Say::StaticB);
            break;
        }
        case Say::StaticB:
            break;
        case Say::Manage:
            Add(dTime + ManageSeconds, t.iTarget, Say::Manage);
            break;
        case Say::Ask:
            Add(dTime + AskSeconds, t.iTarget, Say::Ask);
            break;
        case Say::Time:
            Add(dTime + TimeSeconds, t.iTarget, Say::Time);
            break;
        case Say::Steer:
            break;
    }
}

// A new leg may change the interval; then the next report is planned anew, one new interval from now, unless the old
// plan is sooner.
void Traffic::Steer(int i, double dTime) {
    m_tHarbour.Steer(i, dTime);
    const Target& t = m_tHarbour.At(i);
    Add(t.dLegEnd, i, Say::Steer);
    Sender& tSender = m_tSenders[static_cast<std::size_t>(i)];
    const double dInterval = ReportingSeconds(t);
    if (dInterval == tSender.dInterval) return;
    tSender.dInterval = dInterval;
    if (dTime + dInterval >= tSender.dNominal) return;
    tSender.dNominal = dTime + dInterval;
    ++tSender.lPlan;
    PlanPosition(i);
}

bool Traffic::IsDropped(const Event& t) const {
    return t.eSay == Say::Position && t.lPlan != m_tSenders[static_cast<std::size_t>(t.iTarget)].lPlan;
}

// The channels are used in turn, but the second half of a class B unit's data follows the first.
bool Traffic::OnSecondChannel(const Event& t) const {
    const Sender& tSender = m_tSenders[static_cast<std::size_t>(t.iTarget)];
    return t.eSay == Say::StaticB ? tSender.bStaticOnSecond : tSender.bSecondChannel;
}

// A change of plan needs no channel, nor does a report that is not wanted any more.
Turn Traffic::TurnOf(const Event& t) const {
    if (t.eSay == Say::Steer || IsDropped(t)) return Turn::Go;
    const bool bSecond = OnSecondChannel(t);
    if (m_lLastSlot[bSecond ? 1 : 0] < m_lSlot) return Turn::Go;
    return m_lLastSlot[bSecond ? 0 : 1] < m_lSlot ? Turn::Wait : Turn::Full;
}

void Traffic::Transmit(const Event& t) {
    const double dTime = TimeOf(m_lSlot);
    Sender& tSender = m_tSenders[static_cast<std::size_t>(t.iTarget)];
    const bool bSecond = OnSecondChannel(t);
    if (t.eSay == Say::Static) tSender.bStaticOnSecond = bSecond;
    if (t.eSay != Say::StaticB) tSender.bSecondChannel = !bSecond;
    m_tHarbour.Move(t.iTarget, dTime);
    Encode(t.iTarget, t.eSay, dTime);
    m_lLastSlot[bSecond ? 1 : 0] = m_lSlot + (m_tBits.Bits() > 168 ? 1 : 0);  // longer messages take two slots
    Hear(m_tHarbour.At(t.iTarget), dTime, bSecond ? 'B' : 'A');
}

void Traffic::Encode(int i, Say eSay, double dTime) {
    const Target& t = m_tHarbour.At(i);
    switch (eSay) {
        case Say::Position:
            EncodeReport(t, dTime);
            break;
        case Say::Static:
            if (t.eStation == Station::ClassA)
                EncodeStatic(m_tBits, IdentityOf(t));
            else if (t.bExtended)
                EncodeClassBExtended(m_tBits, IdentityOf(t), MotionOf(t, dTime));
            else
                EncodeStaticA(m_tBits, IdentityOf(t));
            break;
        case Say::StaticB:
            EncodeStaticB(m_tBits, IdentityOf(t));
            break;
        case Say::Manage:
            EncodeLinkManagement(m_tBits, t.lMmsi, 60 + i % 100, 1, 375);
            break;
        case Say::Ask:
            AskSomebody(t, dTime);
            break;
        case Say::Time:
            EncodeBase(m_tBits, 11, t.lMmsi, t.bNoFix ? Fix{} : t.tFix,
                       {m_tOptions.dtStart.lSeconds + static_cast<std::int64_t>(dTime)});
            break;
        case Say::Steer:
            break;
    }
}

void Traffic::EncodeReport(const Target& t, double dTime) {
    const Motion tMotion = MotionOf(t, dTime);
    switch (t.eStation) {
        case Station::ClassB:
            EncodeClassB(m_tBits, t.lMmsi, tMotion);
            break;
        case Station::Aid:
            EncodeAid(m_tBits, IdentityOf(t), t.iAidType, t.tFix, tMotion.iSecond);
            break;
        case Station::Base:
            EncodeBase(m_tBits, 4, t.lMmsi, t.tFix, {m_tOptions.dtStart.lSeconds + static_cast<std::int64_t>(dTime)});
            break;
        case Station::ClassA: {
            const int iStatus = !t.bMoored ? UnderWay : t.lMmsi % 3 == 0 ? AtAnchor : Moored;
            const int iTurn = t.bNoTurn ? NoTurn : TurnFigure(t.dTurn);
            EncodePosition(m_tBits, PositionType(t), t.lMmsi, iStatus, iTurn, tMotion);
            break;
        }
    }
}

void Traffic::AskSomebody(const Target& t, double dTime) {
    const int iAsked = m_iShips[m_tChance.Next() % m_iShips.size()];
    const Target& tAsked = m_tHarbour.At(iAsked);
    EncodeInterrogation(m_tBits, t.lMmsi, tAsked.lMmsi, tAsked.eStation == Station::ClassA ? 5 : 24);
    Add(dTime + AnswerSeconds, iAsked, Say::Static, 1);
}

Motion Traffic::MotionOf(const Target& t, double dTime) const {
    Motion tMotion;
    tMotion.iSecond = static_cast<int>((m_tOptions.dtStart.lSeconds + static_cast<std::int64_t>(dTime)) % 60);
    if (!t.bNoHeading) tMotion.iHeading = static_cast<int>(t.dCourse);
    if (t.bNoFix) return tMotion;
    tMotion.tFix = t.tFix;
    tMotion.dSpeed = t.dSpeed;
    const double dTenths = std::round(t.dCourse * 10.0);
    tMotion.dCourse = dTenths >= 3600.0 ? 0.0 : dTenths / 10.0;
    return tMotion;
}

// The receiver's end: what is in the writer arrives, or does not.
void Traffic::Hear(const Target& t, double dTime, char sChannel) {
    SentMessage tSent = SentFrom(t, dTime, sChannel);
    const double dUnheard = 1 - m_tOptions.tRule.Share(tSent.dMiles, tSent.dBearing, sChannel);
    const double dMissing = m_tOptions.dMissingPercent;
    const bool bLost = m_tReception.Percent(dMissing + (100 - dMissing) * dUnheard);
    const double dSignal = SignalOf(t, dTime) + m_tReception.Between(-2.0, 2.0);
    const int iThreshold = m_tReception.Whole(ThresholdLow, ThresholdHigh);
    tSent.bHeard = !bLost && (m_sChannel == 'S' || m_sChannel == sChannel);
    tSent.dDbm = DbmOfLevel(dSignal) + m_tOptions.tRule.dOffset;
    if (m_Sent) m_Sent(tSent);
    if (!tSent.bHeard) return;

    const int iCount = SentenceCount(m_tBits.Payload());
    if (iCount > 1) m_iSequence = (m_iSequence + 1) % 10;
    for (int iPart = 1; iPart <= iCount; ++iPart) {
        std::string s = VdmSentence(m_tBits.Payload(), m_tBits.FillBits(), sChannel, m_iSequence, iCount, iPart);
        Put(tSent.lMilliseconds, false, s);
    }
    if (!m_tOptions.bSignal) return;
    const double dLevel = m_tOptions.tRule.dOffset == 0 ? dSignal : LevelOfDbm(tSent.dDbm);
    const int iSignal =
        std::clamp(static_cast<int>(std::lround(dLevel)), std::max(WeakestSignal, iThreshold), StrongestSignal);
    std::string s = SignalSentence(iSignal, iThreshold, m_iInterval);
    Put(tSent.lMilliseconds, false, s);
}

// What is in the writer, as far as the sender's part goes.
SentMessage Traffic::SentFrom(const Target& t, double dTime, char sChannel) const {
    SentMessage tSent;
    tSent.lMilliseconds = MillisecondsOf(SlotOf(dTime + SlotSeconds / 2));
    tSent.lMmsi = t.lMmsi;
    tSent.iType = m_tBits.Payload().front() - '0';  // the first character is the type
    tSent.sChannel = sChannel;
    tSent.bFix = !t.bNoFix;
    if (!m_Sent && !m_tOptions.tRule.AsksForPlace()) return tSent;  // nobody asks
    const Fix tOwn = m_tHarbour.Own(dTime).tFix;
    tSent.dMiles = GlobeMiles(tOwn, t.tFix);
    tSent.dBearing = GlobeBearing(tOwn, t.tFix);
    return tSent;
}

// The level in the board's steps, before it fades.
double Traffic::SignalOf(const Target& t, double dTime) const {
    const double dMiles = DistanceMiles(t.tFix, m_tHarbour.Own(dTime).tFix);
    const int iWeaker = t.eStation == Station::ClassB ? ClassBWeaker : 0;
    return 44.0 - m_tOptions.dFall * std::log10(1.0 + dMiles) - iWeaker;
}

void Traffic::SayGps(std::int64_t lSecond) {
    const Motion tOwn = m_tHarbour.Own(static_cast<double>(lSecond));
    const runtime::DateTime dtUtc{m_tOptions.dtStart.lSeconds + lSecond};
    std::string sGll = GllSentence(tOwn, dtUtc);
    std::string sRmc = RmcSentence(tOwn, dtUtc);
    Put(lSecond * 1000, true, sGll);
    Put(lSecond * 1000, true, sRmc);
}

void Traffic::Put(std::int64_t lMilliseconds, bool bGps, std::string& sText) {
    if (m_tOptions.dDamagedPercent > 0 && m_tReception.Percent(m_tOptions.dDamagedPercent)) Damage(sText, m_tReception);
    TrafficLine& t = m_tLines[m_iMade++];
    t.lMilliseconds = lMilliseconds;
    t.bGps = bGps;
    t.sText.swap(sText);
}

}  // namespace simulator
