// The message counts: one row per kind of message, shown once one has come, and a total.
#include <QTest>

#include "tests/window/Bench.h"
#include "tests/window/Shown.h"

using namespace support;

namespace {

struct Messages : Listening {
    Messages() : Listening(ui::TabMessages) {}
    void Hear(int iId, app::PortIndex i = 0) { FeedLine(i, AisSentence(AisOther(iId, 244660123))); }
    QByteArray Shown(int iRow, int iCol) { return Bytes(Cell(grdMessageData, iRow, iCol)); }
    // The rows below the header that show: "title:count".
    QStringList Rows() {
        grdMessageData.Synchronize();
        QStringList sRows;
        for (int iRow = 1; iRow < 35; ++iRow) {
            if (grdMessageData.isRowHidden(iRow - 1)) continue;
            sRows << QString::fromLatin1(Shown(iRow, 0) + ":" + Shown(iRow, 1));
        }
        return sRows;
    }
    Qt::Alignment AlignmentOf(int iRow, int iCol) {
        grdMessageData.Synchronize();
        const QAbstractItemModel& tModel = *grdMessageData.model();
        return (iRow == 0 ? tModel.headerData(iCol, Qt::Horizontal, Qt::TextAlignmentRole)
                          : tModel.index(iRow - 1, iCol).data(Qt::TextAlignmentRole))
            .value<Qt::Alignment>();
    }
};

QByteArray TitleOf(int iId) {
    switch (iId) {
        case 1:
            return "1=Position Scheduled";
        case 2:
            return "2=Position Assigned";
        case 3:
            return "3=Position Response";
        case 4:
            return "4=Base Station Report";
        case 5:
            return "5=Ship Static and Voyage";
        case 11:
            return "11=UTC/Date Response";
        case 15:
            return "15=Interrogation";
        case 18:
            return "18=Class B Standard Position";
        case 19:
            return "19=Class B Extended Position";
        case 20:
            return "20=Data Link Management";
        case 21:
            return "21=Aids-to-Navigation";
        case 24:
            return "24=Class B Static Data";
        default:
            return QByteArray::number(iId);
    }
}

}  // namespace

class MessagesWindowTest : public QObject {
    Q_OBJECT
private slots:
    void resetGridShowsSpacerAndTotal();
    void gridIsSetUpBeforeTheFirstStart();
    void cellsAreAligned();
    void columnsAreAsWideAsTheirTemplates();
    void firstMessageShowsItsRow();
    void everyIdCountsInItsRow_data();
    void everyIdCountsInItsRow();
    void rowsStayInIdOrder();
    void countsAddUp();
    void countsGoOnBeyondTwoToThe31();
    void bothPortsCountTogether();
    void incompleteMessageIsNotCounted();
    void failedMessageIsNotCounted();
    void startZeroesAndHides();
};

void MessagesWindowTest::resetGridShowsSpacerAndTotal() {
    Messages t;
    QCOMPARE(t.Rows(), Texts({":", "Total:0"}));
    QCOMPARE(t.grdMessageData.Cells.Rows(), 35);
    QCOMPARE(t.grdMessageData.Cells.Cols(), 2);
    QCOMPARE(t.Shown(0, 0), QByteArray("Message Id"));
    QCOMPARE(t.Shown(0, 1), QByteArray("Count"));
    QVERIFY(!t.grdMessageData.isRowHidden(33 - 1));
    for (int i = 1; i <= 32; ++i) {
        QVERIFY(t.grdMessageData.isRowHidden(i - 1));
        QCOMPARE(t.Shown(i, 0), TitleOf(i));
        QCOMPARE(t.Shown(i, 1), QByteArray("0"));
    }
}

void MessagesWindowTest::gridIsSetUpBeforeTheFirstStart() {
    ShownWindow t;
    QCOMPARE(Bytes(t.Cell(t.grdMessageData, 34, 0)), QByteArray("Total"));
    QCOMPARE(Bytes(t.Cell(t.grdMessageData, 34, 1)), QByteArray("0"));
}

void MessagesWindowTest::cellsAreAligned() {
    Messages t;
    t.Hear(5);
    const Qt::Alignment eLeft = Qt::AlignLeft | Qt::AlignVCenter, eRight = Qt::AlignRight | Qt::AlignVCenter;
    QCOMPARE(t.AlignmentOf(0, 0), Qt::Alignment(Qt::AlignCenter));
    QCOMPARE(t.AlignmentOf(0, 1), Qt::Alignment(Qt::AlignCenter));
    for (int i = 1; i <= 32; ++i) {
        QCOMPARE(t.AlignmentOf(i, 0), eLeft);
        QCOMPARE(t.AlignmentOf(i, 1), eRight);
    }
    QCOMPARE(t.AlignmentOf(34, 0), Qt::Alignment(Qt::AlignCenter));
    QCOMPARE(t.AlignmentOf(34, 1), eRight);
}

void MessagesWindowTest::columnsAreAsWideAsTheirTemplates() {
    Messages t;
    const toolkit::Grid& grd = t.grdMessageData;
    const auto tWidth = [&grd](const char* sText) {
        return grd.fontMetrics().horizontalAdvance(QString::fromLatin1(sText));
    };
    t.Synchronize();
    QCOMPARE(grd.columnWidth(0), 14 * tWidth("0") + tWidth("---Message Id---"));
    QCOMPARE(grd.columnWidth(1), tWidth("---Count---"));
}

void MessagesWindowTest::firstMessageShowsItsRow() {
    Messages t;
    t.Hear(5);
    QCOMPARE(t.Rows(), Texts({"5=Ship Static and Voyage:1", ":", "Total:1"}));
    t.Hear(7);
    QCOMPARE(t.Rows(), Texts({"5=Ship Static and Voyage:1", "7:1", ":", "Total:2"}));
    // As high as the other rows.
    QCOMPARE(t.grdMessageData.RowHeight(5), t.grdMessageData.RowHeight(34));
    QVERIFY(t.grdMessageData.Redraw());
}

void MessagesWindowTest::everyIdCountsInItsRow_data() {
    QTest::addColumn<int>("iId");
    for (int i = 0; i < 64; ++i) QTest::addRow("%d", i) << i;
}

void MessagesWindowTest::everyIdCountsInItsRow() {
    QFETCH(int, iId);
    Messages t;
    for (int i = 0; i < 3; ++i) t.Hear(iId);
    QStringList sExpected = Texts({":", "Total:0"});
    if (iId >= 1 && iId <= 32) {
        sExpected = {QString::fromLatin1(TitleOf(iId) + ":3"), QStringLiteral(":"), QStringLiteral("Total:3")};
    }
    QCOMPARE(t.Rows(), sExpected);
    QCOMPARE(t.Shown(0, 1), QByteArray("Count"));
    QCOMPARE(t.grdMessageData.Cells.Rows(), 35);
    // A message that is not counted is a target all the same.
    QCOMPARE(t.grdTargetData.Cells.Rows(), 4);
}

void MessagesWindowTest::rowsStayInIdOrder() {
    Messages t;
    for (const int iId : {24, 1, 18, 5, 24, 32, 4}) t.Hear(iId);
    QCOMPARE(t.Rows(), Texts({"1=Position Scheduled:1", "4=Base Station Report:1", "5=Ship Static and Voyage:1",
                              "18=Class B Standard Position:1", "24=Class B Static Data:2", "32:1", ":", "Total:7"}));
}

void MessagesWindowTest::countsAddUp() {
    Messages t;
    Dice tRandom(23);
    std::array<int, 64> iCounts{};
    int iTotal = 0;
    for (int i = 0; i < 2000; ++i) {
        const auto iId = static_cast<int>(tRandom() % 64);
        t.Hear(iId, static_cast<app::PortIndex>(tRandom() % 2));
        ++iCounts[static_cast<std::size_t>(iId)];
        if (iId >= 1 && iId <= 32) ++iTotal;
    }
    for (int iRow = 1; iRow <= 32; ++iRow) {
        QCOMPARE(t.Shown(iRow, 1), QByteArray::number(iCounts[static_cast<std::size_t>(iRow)]));
    }
    QCOMPARE(t.Shown(34, 1), QByteArray::number(iTotal));
    QCOMPARE(t.Shown(33, 0) + t.Shown(33, 1), QByteArray());
}

void MessagesWindowTest::countsGoOnBeyondTwoToThe31() {
    ShownWindow t;
    t.StartBoth();
    t.MessageCount(1, 2147483647);
    t.MessageCount(1, 2);
    t.MessageCount(5, 3);
    QCOMPARE(t.Cell(t.grdMessageData, 1, 1), std::string("2147483649"));
    QCOMPARE(t.Cell(t.grdMessageData, 34, 1), std::string("2147483652"));
}

void MessagesWindowTest::bothPortsCountTogether() {
    Messages t;
    t.Hear(11, 0);
    t.Hear(11, 1);
    QCOMPARE(t.Rows(), Texts({"11=UTC/Date Response:2", ":", "Total:2"}));
}

void MessagesWindowTest::incompleteMessageIsNotCounted() {
    Messages t;
    const auto sParts = AisSentences(AisStaticVoyage(235009802, "A SHIP"), 'A', 3);
    t.FeedLine(0, sParts.at(0));
    QCOMPARE(t.Rows(), Texts({":", "Total:0"}));
    t.FeedLine(0, sParts.at(1));
    QCOMPARE(t.Rows(), Texts({"5=Ship Static and Voyage:1", ":", "Total:1"}));
}

void MessagesWindowTest::failedMessageIsNotCounted() {
    Messages t;
    t.FeedLine(0, "!AIVDM,1,1,,,5000,0");
    t.FeedLine(0, "!AIVDM,1,1,,A,5000,0*00");
    QCOMPARE(t.Rows(), Texts({":", "Total:0"}));
}

void MessagesWindowTest::startZeroesAndHides() {
    Messages t;
    for (const int iId : {1, 5, 7}) t.Hear(iId);
    t.Press(ui::KeyStop);
    QCOMPARE(t.Rows().size(), 5);
    t.Press(ui::KeyStart);
    QCOMPARE(t.Rows(), Texts({":", "Total:0"}));
    t.Hear(5);
    QCOMPARE(t.Rows(), Texts({"5=Ship Static and Voyage:1", ":", "Total:1"}));
}

QTEST_MAIN(MessagesWindowTest)
#include "MessagesWindowTest.moc"
