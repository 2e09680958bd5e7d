// The Timing tab: the three inputs and the picture with its three rows of labels.
#include <array>

#include "platform/toolkit/Twips.h"
#include "ui/FormDesign.h"

namespace ui {

using toolkit::ToTwips;

namespace {

constexpr double Margin = 120;
constexpr double RowGap = 90;
constexpr double InputWidth = 1050;
constexpr double BarHeight = 450;
constexpr double BarGap = 240;

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
    std::vector<std::pair<QWidget*, double>> tRow;
    for (const Input& t : tInputs) {
        auto* pLabel = new QLabel(tr(t.sLabel), &PageTiming);
        pLabel->setObjectName(t.txt.objectName() + QLatin1String("Label"));
        pLabel->setBuddy(&t.txt);
        pLabel->setToolTip(tr(t.sTip));
        t.txt.SetText(t.sText);
        t.txt.setToolTip(tr(t.sTip));
        t.txt.setAccessibleName(tr(t.sLabel));
        tRow.push_back({pLabel, 0});
        tRow.push_back({&t.txt, InputWidth});
    }
    cmdTimingApply.setText(tr("&Apply"));
    tRow.push_back({&cmdTimingApply, 0});
    const double dInputs = PutRow(Margin, BodyTop(), tRow);
    lblTimingMessage.setTextFormat(Qt::PlainText);
    const double dLine = ToTwips(lblTimingMessage.fontMetrics().lineSpacing());
    Put(lblTimingMessage, {Margin, dInputs + RowGap, 9000, dLine});
    const double dPicture = dInputs + 2 * RowGap + dLine;

    lblTimingChA.Name.setText(tr("Ch A"));
    lblTimingChB.Name.setText(tr("Ch B"));
    lblTimingChAlternate.Name.setText(tr("Ch Alternating"));
    lblTimingChA.Percentage.setToolTip(tr("Percentage of  Messages for Channel A"));
    lblTimingChB.Percentage.setToolTip(tr("Percentage of Messages for Channel B"));
    lblTimingChAlternate.Percentage.setToolTip(tr("Percentage of Total Messages for Alternating Channel"));
    const double dNameWidth = ToTwips(lblTimingChAlternate.Name.sizeHint().width()) + Margin;
    const double dPercentageWidth = ToTwips(lblTimingChA.Percentage.fontMetrics().horizontalAdvance(tr(" 100% ")));
    double dTop = Margin;
    for (const TimingLabels& t : {lblTimingChA, lblTimingChB, lblTimingChAlternate}) {
        t.Percentage.setText(tr("100%"));
        t.Percentage.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        Put(t.Name, {0, dTop, dNameWidth, BarHeight});
        Put(t.Percentage, {9000 - dPercentageWidth, dTop, dPercentageWidth, BarHeight});
        dTop += BarHeight + BarGap;
    }
    lblTimingSummary.setTextFormat(Qt::PlainText);
    lblTimingSummary.setTextInteractionFlags(Qt::TextSelectableByMouse);  // also what breaks lines at a CR
    lblTimingSummary.setText(tr("Time Between Messages, Min 30 Sec, Max 210 Sec"));
    lblTimingSummary.setAlignment(Qt::AlignLeft | Qt::AlignTop);
    Put(lblTimingSummary, {dNameWidth, dTop, 9000 - dNameWidth, 3.5 * dLine});
    Put(pctTiming, {Margin, dPicture, 9000, dTop + 4 * dLine});
}

}  // namespace ui
