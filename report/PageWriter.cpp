// The page is written as it comes, so that a table of millions of rows needs no memory.
#include "report/PageWriter.h"

#include "report/PlainText.h"
#include "report/Plotter.h"
#include "report/WholeFile.h"

namespace report {

namespace {

constexpr const char* PageBegin = "<!DOCTYPE html>";

// How much of the page's width a table takes: half, on paper the whole, always the whole.
const char* WidthClass(std::size_t lColumns) {
    return lColumns > 8 ? "part wide" : lColumns > 5 ? "part middle" : "part";
}

std::string Element(const std::string& sName, const std::string& sText, const char* sClass = "") {
    return "<" + sName + (*sClass ? std::string(" class=\"") + sClass + "\"" : "") + ">" + MarkupText(sText) + "</" +
           sName + ">";
}

// The picture's own element, with names that no other picture of the page has.
std::string Inline(std::string sSvg, const std::string& sKey) {
    sSvg.erase(0, sSvg.find("<svg"));
    for (const std::string sBefore : {"id='", "id=\"", "href='#"}) {
        for (auto l = sSvg.find(sBefore); l != std::string::npos; l = sSvg.find(sBefore, l + 1)) {
            sSvg.insert(l + sBefore.size(), sKey + "-");
        }
    }
    return sSvg;
}

class PageWriter : public Writer {
public:
    PageWriter(const std::string& sFile, const std::string& sTitle, const std::vector<std::string>& sSources)
        : m_tFile(sFile, PageBegin), m_tPage(m_tFile.Descriptor()) {
        std::string sFiles;
        for (const std::string& s : sSources) {
            sFiles += (sFiles.empty() ? "" : ", ") + (s == "-" ? std::string("standard input") : FileNameOf(s));
        }
        m_tPage.Write(std::string(PageBegin) +
                      "\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
                      "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n" +
                      Element("title", sTitle + " - " + sFiles) + "\n<style>" + PageStyle +
                      "</style>\n</head>\n<body>\n<header>\n" + Element("h1", sTitle) + "\n" +
                      Element("p", sFiles, "files") + "\n</header>\n");
    }

    bool Draws() const override { return true; }

    void Section(const std::string& sTitle) override {
        EndSection();
        m_sSection = sTitle;
    }

    void Fields(const std::string&, const std::string& sTitle, const std::vector<Field>& tFields) override {
        if (tFields.size() == 1 && tFields[0].sLabel.empty()) return Sentence(sTitle, CellText(tFields[0].tValue, ""));
        BeginPart(sTitle, 2);
        m_tPage.Write("<tbody>\n");
        for (const Field& t : tFields) {
            std::string sValue = CellText(t.tValue, "not known");
            if (!t.sUnit.empty() && t.tValue.index() != 0) sValue += " " + t.sUnit;
            m_tPage.Write("<tr>" + Element("th", t.sLabel) + Element("td", sValue) + "</tr>\n");
        }
        EndTable();
    }

    void BeginTable(const std::string&, const std::string& sTitle, std::vector<Column> tColumns) override {
        m_tColumns = std::move(tColumns);
        BeginPart(sTitle, m_tColumns.size());
        m_tPage.Write("<thead>\n<tr>");
        for (const Column& t : m_tColumns) m_tPage.Write(Element("th", t.sHeader, t.bLeft ? "left" : ""));
        m_tPage.Write("</tr>\n</thead>\n<tbody>\n");
    }

    void Row(const std::vector<Cell>& tCells) override {
        std::string sRow = "<tr>";
        for (std::size_t i = 0; i < tCells.size(); ++i) {
            sRow += Element("td", CellText(tCells[i], "\u2013"), m_tColumns[i].bLeft ? "left" : "");
        }
        m_tPage.Write(sRow + "</tr>\n");
    }

    void EndTable() override { m_tPage.Write("</tbody>\n</table>\n</div>\n</section>\n"); }

    void Draw(const Picture& t) override {
        BeginParts();
        m_tPage.Write("<figure class=\"part\">\n" + Element("h3", t.sTitle) + "\n");
        m_tPage.Write(HasPoints(t) ? Inline(Drawn(t, PlotFormat::InlineSvg), t.sKey)
                                   : Element("p", "There is nothing to draw: see the notes below.", "none"));
        m_tPage.Write("<figcaption>" + MarkupText(t.sRule) + " " + Element("b", CountText(t)) +
                      "</figcaption>\n</figure>\n");
    }

    void Note(const std::string& sText) override { m_sNotes.push_back(sText); }

    void End() override {
        EndSection();
        m_tPage.Write("<footer>Made by tidewatch-report " TIDEWATCH_VERSION
                      ". Times are those of the files.</footer>\n"
                      "</body>\n</html>\n");
        m_tPage.Flush();
        m_tFile.Finish();
    }

private:
    // A section without content has no heading either.
    void BeginContent() {
        if (!m_sSection.empty()) m_tPage.Write(Element("h2", m_sSection) + "\n");
        m_sSection.clear();
    }

    void BeginParts() {
        BeginContent();
        if (!m_bInParts) m_tPage.Write("<div class=\"parts\">\n");
        m_bInParts = true;
    }

    // What is said in words, above the figures.
    void Sentence(const std::string& sTitle, const std::string& sText) {
        BeginParts();
        m_tPage.Write("<section class=\"part wide said\">\n" + Element("h3", sTitle) + "\n" + Element("p", sText) +
                      "\n</section>\n");
    }

    void BeginPart(const std::string& sTitle, std::size_t lColumns) {
        BeginParts();
        m_tPage.Write(std::string("<section class=\"") + WidthClass(lColumns) + "\">\n" + Element("h3", sTitle) +
                      "\n<div class=\"scroll\">\n<table>\n");
    }

    void EndSection() {
        if (m_bInParts) m_tPage.Write("</div>\n");
        m_bInParts = false;
        if (m_sNotes.empty()) return;
        BeginContent();
        m_tPage.Write("<ul class=\"notes\">\n");
        for (const std::string& s : m_sNotes) m_tPage.Write(Element("li", s) + "\n");
        m_tPage.Write("</ul>\n");
        m_sNotes.clear();
    }

    WholeFile m_tFile;
    Sink m_tPage;
    std::vector<Column> m_tColumns;
    std::string m_sSection;  // its heading, until something stands below it
    std::vector<std::string> m_sNotes;
    bool m_bInParts = false;
};

}  // namespace

std::unique_ptr<Writer> MakePageWriter(const std::string& sFile, const std::string& sTitle,
                                       const std::vector<std::string>& sSources) {
    return std::make_unique<PageWriter>(sFile, sTitle, sSources);
}

}  // namespace report
