// From what was asked to what is said.
#include "report/Run.h"

#include <cerrno>
#include <system_error>

#include "report/ProgressBar.h"
#include "report/Sequence.h"

namespace report {

namespace {

// What holds for the files as such. True when all were read.
bool TellEnds(const std::vector<FileEnd>& tEnds, Writer& tWriter, Sink& tNotes) {
    bool bGood = true;
    for (const FileEnd& t : tEnds) {
        const auto Tell = [&](const std::string& sText) {
            const std::string sNote = t.sFile + ": " + sText;
            tWriter.Note(sNote);
            tNotes.Write("tidewatch-report: " + sNote + "\n");
            bGood = false;
        };
        if (t.sFault.empty() && t.lLines == 0 && !t.bUnfinished) Tell("is empty");
        if (!t.sFault.empty() && t.lLines == 0) Tell(t.sFault);
        if (!t.sFault.empty() && t.lLines > 0) {
            Tell(t.sFault + " - " + std::to_string(t.lLines) + " lines before that were read");
        }
        if (t.lLines > 0 && t.lStamped == 0) Tell("no line begins with a date and time, this is no record file");
        if (t.bUnfinished) tWriter.Note(t.sFile + ": the last line has no end yet and was left.");
    }
    return bGood;
}

}  // namespace

int Run(const Asked& tAsked, int iResult, int iNotes) {
    Sink tResult(iResult);
    Sink tNotes(iNotes);
    const Options& tOptions = tAsked.tOptions;
    const auto pWriter = MakeWriter(tOptions.eFormat, tAsked.pCommand->sName, tResult, tNotes);
    Sequence tSequence(tOptions.sFiles, tOptions.tPosition ? OwnPosition(*tOptions.tPosition) : OwnPosition());
    try {
        const auto pCollector = tAsked.pCommand->pMake(tOptions, *pWriter);
        {
            ProgressBar tBar(iNotes);
            tSequence.Play(*pCollector, [&](double dShare) { tBar.Show(dShare); });
        }
        const bool bSaid = pCollector->Finish();
        const bool bRead = TellEnds(tSequence.Ends(), *pWriter, tNotes);
        pWriter->End();
        tResult.Flush();
        tNotes.Flush();
        return bSaid && bRead ? ExitGood : ExitUnsaid;
    } catch (const std::runtime_error& tError) {
        // Nobody reads on, or there is no room.
        tNotes.Write(std::string("tidewatch-report: the result could not be written: ") + tError.what() + "\n");
        tNotes.Flush();
        return ExitUnsaid;
    }
}

}  // namespace report
