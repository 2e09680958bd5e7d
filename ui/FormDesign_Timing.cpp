// The Timing tab: the three inputs and the picture with its three rows of labels.
#include <algorithm>
#include <array>

#include "platform/toolkit/FieldWidth.h"
#include "platform/toolkit/Latin1.h"
#include "platform/toolkit/Twips.h"
#include "ui/FormDesign.h"

namespace ui {

using toolkit::FromLatin1;
using toolkit::ToTwips;

namespace {

constexpr double Margin = 120;
constexpr double RowGap = 90;
constexpr double BarHeight = 450;
constexpr double BarGap = 240;

// The widest line of the summary, with room for times of up to five digits.
constexpr char SummaryTemplate[] = "Single Ch Alterating, Time Between Messages, Min 00000 sec, Max 00000 sec";
constexpr char RateTemplate[] = "0000000";

}  // namespace

void FormDesign::DesignTiming() {
    struct Input {
        toolkit::TextBox& txt;
        const char* sText;
        const char* sLabel;
        const char* sTip;
    };
    const std::array<Input, 3> tInputs = {{
        {txtTimingRateTx, "30", "Tx Rate", "Transmitter Rate (seconds/message)"},
        {txtTimingRateRc, "36", "Rc Alternating Rate", "Receiver Alternating Rate (seconds/channel)"},
        {txtTimingTimeSpan, "360", "Time Span",
         "Time Span (seconds), should be multiple of Tx Rate and Rc Alternating Rate"},
    }};
    for (const Input& t : tInputs) {
        AddLabel(t.txt, FromLatin1(t.sLabel));
        LabelOf(t.txt)->setToolTip(FromLatin1(t.sTip));
        t.txt.SetText(t.sText);
        t.txt.setToolTip(FromLatin1(t.sTip));
        t.txt.setAccessibleName(FromLatin1(t.sLabel));
    }
    cmdTimingApply.setText(QStringLiteral("&Apply"));
    lblTimingMessage.setTextFormat(Qt::PlainText);

    lblTimingChA.Name.setText(QStringLiteral("Ch A"));
    lblTimingChB.Name.setText(QStringLiteral("Ch B"));
    lblTimingChAlternate.Name.setText(QStringLiteral("Ch Alternating"));
    lblTimingChA.Percentage.setToolTip(QStringLiteral("Percentage of  Messages for Channel A"));
    lblTimingChB.Percentage.setToolTip(QStringLiteral("Percentage of Messages for Channel B"));
    lblTimingChAlternate.Percentage.setToolTip(QStringLiteral("Percentage of Total Messages for Alternating Channel"));
    for (const TimingLabels& t : {lblTimingChA, lblTimingChB, lblTimingChAlternate}) {
        t.Percentage.setText(QStringLiteral("100%"));
        t.Percentage.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    }
    lblTimingSummary.setTextFormat(Qt::PlainText);
    lblTimingSummary.setTextInteractionFlags(Qt::TextSelectableByMouse);  // also what breaks lines at a CR
    lblTimingSummary.setText(QStringLiteral("Time Between Messages, Min 30 Sec, Max 210 Sec"));
    lblTimingSummary.setAlignment(Qt::AlignLeft | Qt::AlignTop);
}

void FormDesign::PutTiming() {
    std::vector<std::pair<QWidget*, double>> tRow;
    for (toolkit::TextBox* pBox : {&txtTimingRateTx, &txtTimingRateRc, &txtTimingTimeSpan}) {
        tRow.push_back({LabelOf(*pBox), 0});
        tRow.push_back({pBox, ToTwips(toolkit::FieldWidth(*pBox, RateTemplate))});
    }
    tRow.push_back({&cmdTimingApply, 0});
    const double dInputs = PutRow(Margin, BodyTop(), tRow);
    const QFontMetrics tMetrics = lblTimingSummary.fontMetrics();
    const double dLine = ToTwips(tMetrics.lineSpacing());
    const double dNameWidth = ToTwips(lblTimingChAlternate.Name.sizeHint().width()) + Margin;
    const double dPercentageWidth = ToTwips(tMetrics.horizontalAdvance(QStringLiteral(" 100% ")));
    const double dSummaryWidth = ToTwips(tMetrics.horizontalAdvance(FromLatin1(SummaryTemplate)));
    const double dWidth = dNameWidth + std::max(dSummaryWidth, dPercentageWidth);
    const double dBar = std::max(BarHeight, ToTwips(lblTimingChAlternate.Name.sizeHint().height()));
    double dTop = Margin;
    for (const TimingLabels& t : {lblTimingChA, lblTimingChB, lblTimingChAlternate}) {
        Put(t.Name, {0, dTop, dNameWidth, dBar});
        Put(t.Percentage, {dWidth - dPercentageWidth, dTop, dPercentageWidth, dBar});
        dTop += dBar + BarGap;
    }
    Put(lblTimingSummary, {dNameWidth, dTop, dWidth - dNameWidth, 3.5 * dLine});
    Put(lblTimingMessage, {Margin, dInputs + RowGap, dWidth, dLine});
    Put(pctTiming, {Margin, dInputs + 2 * RowGap + dLine, dWidth, dTop + 4 * dLine});
}

}  // namespace ui
