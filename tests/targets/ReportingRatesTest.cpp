// The texts of the reporting-rate reference.
#include "targets/ReportingRates.h"

#include <QTest>

#include "tests/support/Bytes.h"

using support::Bytes;
using targets::ReportingRates;

class ReportingRatesTest : public QObject {
    Q_OBJECT

private slots:
    void rowReads_data();
    void rowReads();
};

void ReportingRatesTest::rowReads_data() {
    QTest::addColumn<int>("row");
    QTest::addColumn<QByteArray>("line");
    const char* const sRows[] = {
        "Type of Ship|Class A Rates|Class B Rates",
        "Ship at Anchor|180 sec|180 sec",
        "||",
        "Ship 0-14 knots|10 sec|30 sec",
        "Ship 0-14 knots and Changing Course|3 sec|30 sec",
        "Ship 14-23 knots|6 sec|15 sec",
        "Ship 14-23 knots and Changing Course|2 sec|15 sec",
        "Ship >23 knots|2 sec|5 sec",
        "Ship >23 knots and Changing Course|2 sec|5 sec",
        "||",
        "Static Information|360 sec|",
        "Voyage Related Information|360 sec|",
        "||",
        "Mssage Type|1,2,3,4,5,11,21|18,19,24",
    };
    QCOMPARE(std::size(sRows), ReportingRates.size());
    for (int iRow = 0; iRow < static_cast<int>(std::size(sRows)); ++iRow) {
        QTest::addRow("row %d", iRow) << iRow << QByteArray(sRows[iRow]);
    }
}

void ReportingRatesTest::rowReads() {
    QFETCH(int, row);
    QFETCH(QByteArray, line);
    const auto& sCells = ReportingRates[static_cast<std::size_t>(row)];
    QCOMPARE(Bytes(sCells[0]) + '|' + Bytes(sCells[1]) + '|' + Bytes(sCells[2]), line);
}

QTEST_GUILESS_MAIN(ReportingRatesTest)
#include "ReportingRatesTest.moc"
