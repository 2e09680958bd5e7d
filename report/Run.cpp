// From what was asked to what is said.
#include "report/Run.h"

#include <csignal>
#include <stdexcept>

#include "report/Compare.h"
#include "report/PageWriter.h"
#include "report/PictureWriter.h"
#include "report/ProgressBar.h"
#include "report/Sequence.h"
#include "report/Watch.h"
#include "report/WriterList.h"

namespace report {

namespace {

// The page and the folders of pictures that are asked for.
std::shared_ptr<WriterList> DrawingWriters(const Options& t, Sink& tNotes) {
    const auto p = std::make_shared<WriterList>();
    if (!t.sPage.empty()) p->Add(MakePageWriter(t.sPage, "What the recordings say", t.sFiles));
    if (!t.sPngFolder.empty()) p->Add(MakePictureWriter(t.sPngFolder, PlotFormat::Png, tNotes));
    if (!t.sSvgFolder.empty()) p->Add(MakePictureWriter(t.sSvgFolder, PlotFormat::Svg, tNotes));
    return p;
}

// A command's collector, and behind it those whose results only the page and the pictures have.
class Parts final : public Collector {
public:
    Parts(const Asked& t, Writer& tAll, Writer& tDrawing) : m_tDrawing(tDrawing) {
        tAll.Section(t.pCommand->sHelp);  // rows may be written from now on
        Add(*t.pCommand, t.tOptions, tAll);
        if (!tDrawing.Draws()) return;
        for (const Command& tPart : PartsOf(*t.pCommand)) Add(tPart, t.tOptions, tDrawing);
    }

    void Line(const LineEvent& t) override {
        for (const Part& tPart : m_tParts) tPart.pCollector->Line(t);
    }
    void Message(const Report& t) override {
        for (const Part& tPart : m_tParts) tPart.pCollector->Message(t);
    }
    bool Finish() override {
        const bool bSaid = m_tParts.front().pCollector->Finish();
        for (std::size_t i = 1; i < m_tParts.size(); ++i) {
            m_tDrawing.Section(m_tParts[i].sTitle);
            m_tParts[i].pCollector->Finish();  // what a part cannot say is a note
        }
        return bSaid;
    }

private:
    struct Part {
        std::string sTitle;
        std::unique_ptr<Collector> pCollector;
    };

    void Add(const Command& t, const Options& tOptions, Writer& tWriter) {
        m_tParts.push_back({t.sHelp, t.pMake(tOptions, tWriter)});
    }

    Writer& m_tDrawing;
    std::vector<Part> m_tParts;
};

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

// True when all that was asked for could be said.
bool Play(const Asked& tAsked, Writer& tAll, Writer& tDrawing, int iNotes, std::vector<FileEnd>& tEnds) {
    const Options& tOptions = tAsked.tOptions;
    std::optional<ProgressBar> tBar(iNotes);
    const auto Show = [&](double dShare) { tBar->Show(dShare); };
    if (!tAsked.pCommand->pMake) {
        tAll.Section(tAsked.pCommand->sHelp);
        return Compare(tOptions, tAll, Show, tEnds);
    }
    Sequence tSequence(tOptions.sFiles, tOptions.tPosition ? OwnPosition(*tOptions.tPosition) : OwnPosition());
    Parts tCollector(tAsked, tAll, tDrawing);
    tSequence.Play(tCollector, Show);
    tBar.reset();
    tEnds = tSequence.Ends();
    return tCollector.Finish();
}

}  // namespace

int Run(const Asked& tAsked, int iResult, int iNotes) {
    Sink tResult(iResult);
    Sink tNotes(iNotes, Sink::For::Notes);
    const Options& tOptions = tAsked.tOptions;
    try {
        if (tAsked.pCommand->iTakes & TakesWatch) {
            return Watch(tOptions, *MakeWriter(tOptions.eFormat, tAsked.pCommand->sName, tResult, tNotes), tResult,
                         tNotes);
        }
        const auto pDrawing = DrawingWriters(tOptions, tNotes);
        WriterList tAll;
        tAll.Add(MakeWriter(tOptions.eFormat, tAsked.pCommand->sName, tResult, tNotes));
        tAll.Add(pDrawing);
        std::vector<FileEnd> tEnds;
        const bool bSaid = Play(tAsked, tAll, *pDrawing, iNotes, tEnds);
        tAll.Section("The files");
        const bool bRead = TellEnds(tEnds, tAll, tNotes);
        tAll.End();
        tResult.Flush();
        tNotes.Flush();
        return bSaid && bRead ? ExitGood : ExitUnsaid;
    } catch (const NobodyReads&) {
        // By now nothing half is left anywhere: the end is what a broken pipe's is.
        std::signal(SIGPIPE, SIG_DFL);
        std::raise(SIGPIPE);
        return ExitUnsaid;
    } catch (const std::runtime_error& tError) {
        tNotes.Write(std::string("tidewatch-report: the result could not be written: ") + tError.what() + "\n");
        tNotes.Flush();
        return ExitUnsaid;
    }
}

}  // namespace report
