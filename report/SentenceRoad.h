// The road of one file's sentences: tests, decoders, assembly of messages, the tie of signal levels to their message,
// range and bearing. All of it is done by the computations that the window calls, in the window's order
// (frmMain::SentenceDispatch).
#pragma once

#include <array>
#include <string_view>

#include "decoders/VdmMessage.h"
#include "platform/runtime/PortIndex.h"
#include "report/Event.h"
#include "report/OwnPosition.h"
#include "report/Ships.h"

namespace report {

class SentenceRoad {
public:
    // The file's number, and what several files have in common; all of that must outlive the road.
    SentenceRoad(std::size_t iFile, OwnPosition& tOwn, Ships& tShips, Collector& tCollector)
        : m_tOwn(tOwn), m_tShips(tShips), m_tCollector(tCollector) {
        m_tReport.iFile = iFile;
    }

    // A sentence with its time; it makes a line event and perhaps a message event. tLine's kind is found out here.
    void Take(LineEvent& tLine, std::string_view sSentence);
    // Gives the last message out, whose levels could have followed.
    void Finish();

    // The operations of nmea::SentenceTable.
    void PnmlsDecode(runtime::PortIndex);
    void VdmDecode(runtime::PortIndex);
    void GllDecode(runtime::PortIndex);
    void RmcDecode(runtime::PortIndex);

private:
    LineKind Dispatch();
    void Keep(std::string_view sChannel);
    void KeepPosition();
    void KeepGps(const decoders::GpsPosition& t);

    OwnPosition& m_tOwn;
    Ships& m_tShips;
    Collector& m_tCollector;
    // Of the sentence that is being taken.
    std::string_view m_sSentence;
    runtime::DateTime m_dt;
    LineKind m_eKind = LineKind::Other;
    // Of those before.
    decoders::VdmMessage m_tVdmMessage;
    bool m_bLastVdm = false;
    // The newest message waits here for its levels.
    bool m_bWaiting = false;
    Report m_tReport;
    std::array<std::int32_t, Report::ValuesKept> m_lData{};
};

}  // namespace report
