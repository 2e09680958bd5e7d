// The list below a port field: names with their maker's description and who uses them, as wide as its content.
#pragma once

#include <QCompleter>
#include <vector>

#include "platform/toolkit/PortNames.h"

namespace toolkit {

class PortListModel;

class PortList : public QCompleter {
    Q_OBJECT
public:
    explicit PortList(QWidget* pField);

    void SetOffers(const std::vector<PortOffer>& tOffers);
    // Opens the list below the field with the offers that have the text in them, all for an empty one; closes it where
    // none has. sPresent is the entry to stand on, if it is there.
    void Open(const QString& sText, const QString& sPresent = {});
    bool IsOpen() const;

private:
    void StandOn(const QString& sName);

    PortListModel* m_pModel;
};

}  // namespace toolkit
