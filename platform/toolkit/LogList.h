// A bounded log list: a list view over LogLines whose lines can carry a mark (decoded, forwarded). The newest line is
// the current one and stays in view, until the user scrolls back or selects: then the lines that he reads stay, and
// move up only as old ones roll out. His own cursor and selection, for copying, are apart from current line and marks.
#pragma once

#include <QItemSelectionModel>
#include <QListView>
#include <string_view>

#include "platform/runtime/LogLines.h"

class QLabel;

namespace toolkit {

class LogModel;
class NewestMark;
class RepaintBeat;

class LogList : public QListView {
    Q_OBJECT
public:
    explicit LogList(QWidget* pParent = nullptr);
    ~LogList() override;

    runtime::LogLines Lines;

    // Marks are drawn, and told to a screen reader, in lists that carry them.
    void SetShowsMarks(bool bShowsMarks);

    // What stands in the middle of the view while there is no line.
    void SetEmptyHint(const QString& sHint);
    QString EmptyHint() const;  // as it stands there now; empty over lines
    // A short name, written in a strip of its own beside the lines.
    void SetName(const QString& sName);

    void Synchronize();
    int CurrentLine() const;  // of the store: the newest that the view knows, -1 when there is none
    // Whether the newest line is kept in view: while the view stands at its end, no button is held on its lines and
    // nothing is selected.
    bool Follows() const;
    // Leads back to the newest line, without a selection.
    void FollowNewest();
    QString SelectedText() const;
    void CopySelection() const;

protected:
    bool viewportEvent(QEvent* pEvent) override;
    void paintEvent(QPaintEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;
    void contextMenuEvent(QContextMenuEvent* pEvent) override;
    void showEvent(QShowEvent* pEvent) override;
    void resizeEvent(QResizeEvent* pEvent) override;
    void changeEvent(QEvent* pEvent) override;
    void updateGeometries() override;
    void setSelection(const QRect& tRect, QItemSelectionModel::SelectionFlags eCommand) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& tIndex,
                                                         const QEvent* pEvent) const override;

private:
    void TakeOver();
    void PlaceName();
    void GoToNewest();
    bool AtEnd() const;
    void ShowMark();

    LogModel* m_pModel;
    RepaintBeat* m_pBeat;
    NewestMark* m_pMark;
    QLabel* m_pName = nullptr;
    QString m_sEmptyHint;
    bool m_bAtNewest = true;  // the user has not left the end
    bool m_bButtonHeld = false;
    int m_iGoneSincePress = 0;  // lines that have rolled out while the button is held
    bool m_bOwnMove = false;    // what scrolls or moves the cursor now is not the user
};

}  // namespace toolkit
