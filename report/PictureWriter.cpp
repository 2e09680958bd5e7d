// All but the pictures passes by.
#include "report/PictureWriter.h"

#include "report/Plotter.h"
#include "report/WholeFile.h"

namespace report {

namespace {

class PictureWriter : public Writer {
public:
    PictureWriter(std::string sFolder, PlotFormat e, Sink& tNotes)
        : m_sFolder(std::move(sFolder)), m_eFormat(e), m_tNotes(tNotes) {
        PrepareFolder(m_sFolder);
    }

    bool Draws() const override { return true; }
    void Fields(const std::string&, const std::string&, const std::vector<Field>&) override {}
    void BeginTable(const std::string&, const std::string&, std::vector<Column>) override {}
    void Row(const std::vector<Cell>&) override {}
    void EndTable() override {}
    void Note(const std::string&) override {}
    void End() override {}

    void Draw(const Picture& t) override {
        const std::string sName = t.sKey + (m_eFormat == PlotFormat::Png ? ".png" : ".svg");
        if (!HasPoints(t)) return m_tNotes.Write("tidewatch-report: " + sName + ": there is nothing to draw\n");
        WholeFile tFile(m_sFolder + "/" + sName, m_eFormat == PlotFormat::Png ? "\x89PNG" : "<?xml");
        Sink tPicture(tFile.Descriptor());
        tPicture.Write(Drawn(t, m_eFormat));
        tPicture.Flush();
        tFile.Finish();
    }

private:
    const std::string m_sFolder;
    const PlotFormat m_eFormat;
    Sink& m_tNotes;
};

}  // namespace

std::unique_ptr<Writer> MakePictureWriter(const std::string& sFolder, PlotFormat e, Sink& tNotes) {
    return std::make_unique<PictureWriter>(sFolder, e, tNotes);
}

}  // namespace report
