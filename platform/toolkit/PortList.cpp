// The offers as a model, painted in two columns.
#include "platform/toolkit/PortList.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QScreen>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QStyledItemDelegate>
#include <algorithm>

namespace toolkit {

namespace {

enum Role { NameRole = Qt::UserRole, DetailRole };

constexpr int ColumnGap = 16;  // pixels between a name and what is told of it
constexpr int Padding = 4;     // before and behind a line
constexpr int MostRows = 12;   // more are scrolled to

QString Detail(const PortOffer& tOffer) {
    QStringList sDetails{tOffer.tPort.sDescription};
    if (!tOffer.tPort.sHolder.isEmpty()) sDetails << QStringLiteral("in use by ") + tOffer.tPort.sHolder;
    sDetails.removeAll(QString());
    return sDetails.join(QStringLiteral(", "));
}

}  // namespace

class PortListModel : public QStandardItemModel {
public:
    using QStandardItemModel::QStandardItemModel;

    void Fill(const std::vector<PortOffer>& tOffers) {
        clear();
        m_sNames.clear();
        for (const PortOffer& tOffer : tOffers) {
            m_sNames << tOffer.sName;
            const QString sDetail = Detail(tOffer);
            auto* pItem =
                new QStandardItem(sDetail.isEmpty() ? tOffer.sName : tOffer.sName + QStringLiteral(", ") + sDetail);
            pItem->setData(tOffer.sName, NameRole);
            pItem->setData(sDetail, DetailRole);
            pItem->setToolTip(tOffer.sWholeName == tOffer.tPort.sDevice
                                  ? tOffer.sWholeName
                                  : tOffer.sWholeName + QLatin1Char('\n') + tOffer.tPort.sDevice);
            appendRow(pItem);
        }
        if (!tOffers.empty()) return;
        auto* pNone = new QStandardItem(QStringLiteral("No serial port is plugged in"));
        pNone->setFlags(Qt::NoItemFlags);
        appendRow(pNone);
    }
    // Where the second column begins, behind the first one's edge.
    int NameWidth(const QFontMetrics& tMetrics) const {
        int iWidth = 0;
        for (const QString& sName : m_sNames) iWidth = std::max(iWidth, tMetrics.horizontalAdvance(sName));
        return iWidth;
    }

private:
    QStringList m_sNames;
};

namespace {

class PortDelegate : public QStyledItemDelegate {
public:
    PortDelegate(const PortListModel& tModel, QObject* pParent) : QStyledItemDelegate(pParent), m_tModel(tModel) {}

    void paint(QPainter* pPainter, const QStyleOptionViewItem& tOption, const QModelIndex& tIndex) const override {
        if (!tIndex.data(NameRole).isValid()) {
            QStyledItemDelegate::paint(pPainter, tOption, tIndex);
            return;
        }
        const bool bChosen = (tOption.state & QStyle::State_Selected) != 0;
        if (bChosen) pPainter->fillRect(tOption.rect, tOption.palette.highlight());
        pPainter->setFont(tOption.font);
        QColor tInk = tOption.palette.color(bChosen ? QPalette::HighlightedText : QPalette::Text);
        pPainter->setPen(tInk);
        QRect tRect = tOption.rect.adjusted(Padding, 0, -Padding, 0);
        constexpr int Place = Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine;
        pPainter->drawText(tRect, Place, Cut(tOption, tIndex.data(NameRole).toString(), tRect.width()));
        tRect.setLeft(tRect.left() + m_tModel.NameWidth(tOption.fontMetrics) + ColumnGap);
        tInk.setAlphaF(0.75F);  // second to the name, and readable still
        pPainter->setPen(tInk);
        pPainter->drawText(tRect, Place, Cut(tOption, tIndex.data(DetailRole).toString(), tRect.width()));
    }
    QSize sizeHint(const QStyleOptionViewItem& tOption, const QModelIndex& tIndex) const override {
        const QFontMetrics& tMetrics = tOption.fontMetrics;
        if (!tIndex.data(NameRole).isValid()) return QStyledItemDelegate::sizeHint(tOption, tIndex);
        const int iDetail = tMetrics.horizontalAdvance(tIndex.data(DetailRole).toString());
        const int iWidth = m_tModel.NameWidth(tMetrics) + (iDetail > 0 ? ColumnGap + iDetail : 0);
        return {iWidth + 2 * Padding, tMetrics.height() + Padding};
    }

private:
    static QString Cut(const QStyleOptionViewItem& tOption, const QString& sText, int iWidth) {
        return tOption.fontMetrics.elidedText(sText, Qt::ElideRight, iWidth);
    }
    const PortListModel& m_tModel;
};

}  // namespace

PortList::PortList(QWidget* pField) : QCompleter(pField), m_pModel(new PortListModel(this)) {
    setModel(m_pModel);
    setWidget(pField);
    setCompletionRole(NameRole);
    setFilterMode(Qt::MatchContains);
    setCaseSensitivity(Qt::CaseInsensitive);
    setMaxVisibleItems(MostRows);
    popup()->setItemDelegate(new PortDelegate(*m_pModel, this));
    popup()->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    popup()->setAccessibleName(QStringLiteral("Serial ports"));
}

void PortList::SetOffers(const std::vector<PortOffer>& tOffers) { m_pModel->Fill(tOffers); }

void PortList::Open(const QString& sText, const QString& sPresent) {
    setCompletionPrefix(sText);
    const QRect tScreen = widget()->screen()->availableGeometry();
    const int iAround = 2 * popup()->frameWidth() +
                        (completionCount() > MostRows ? popup()->verticalScrollBar()->sizeHint().width() : 0);
    int iContent = 0;
    for (int i = 0; i < completionModel()->rowCount(); ++i) {
        iContent = std::max(iContent, popup()->sizeHintForIndex(completionModel()->index(i, 0)).width());
    }
    popup()->setMinimumWidth(std::min(std::max(iContent + iAround, widget()->width()), tScreen.width()));
    complete();
    if (!IsOpen()) return;
    const int iBeyond = popup()->geometry().right() - tScreen.right();
    if (iBeyond > 0) popup()->move(popup()->x() - iBeyond, popup()->y());
    StandOn(sPresent);
}

bool PortList::IsOpen() const { return popup()->isVisible(); }

void PortList::StandOn(const QString& sName) {
    for (int i = 0; i < completionModel()->rowCount(); ++i) {
        const QModelIndex tIndex = completionModel()->index(i, 0);
        if (!sName.isEmpty() && tIndex.data(NameRole).toString() == sName) popup()->setCurrentIndex(tIndex);
    }
}

}  // namespace toolkit
