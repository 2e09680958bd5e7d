// Asking for a file, and whether it may be replaced.
#include "platform/toolkit/FileDialog.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>

namespace toolkit {

namespace {

bool IsFile(const QString& sPath) {
    const QFileInfo tInfo(sPath);
    return tInfo.exists() && !tInfo.isDir();
}

// "[*]" would be Qt's place for a mark, but not in a desktop's own dialog, which has its title from the same text: a
// joiner without width makes it plain text for both.
QString Title(const FileRequest& tRequest) {
    return QString(tRequest.sTitle).replace(QLatin1String("[*]"), QStringLiteral("[\u2060*]"));
}

class FileDialog : public QFileDialog {
public:
    FileDialog(QWidget* pWindow, const FileRequest& tRequest)
        : QFileDialog(pWindow, Title(tRequest), tRequest.sFolder, AnyCaseFilter(tRequest.sFilter)),
          m_tRequest(tRequest) {
        setAcceptMode(tRequest.bSave ? AcceptSave : AcceptOpen);
        setFileMode(tRequest.bSave ? AnyFile : ExistingFile);
        setOption(HideNameFilterDetails);
        selectFile(tRequest.sFileName);
    }

    FileChoice Choice() const { return ChooseFile(m_tRequest, selectedFiles().constFirst(), IsFile); }

    void accept() override {
        // Qt's own dialog knows of no suffix here and would not find the file.
        if (!m_tRequest.bSave && !selectedFiles().isEmpty() && Choice().sFile != selectedFiles().constFirst()) {
            QDialog::accept();
        } else {
            QFileDialog::accept();
        }
    }

private:
    const FileRequest& m_tRequest;
};

// In the words of the dialogs' own question.
bool MayReplace(QWidget* pWindow, const FileRequest& tRequest, const QString& sFile) {
    const QString sText = QStringLiteral("%1 already exists.\nDo you want to replace it?");
    return QMessageBox::warning(pWindow, Title(tRequest), sText.arg(QFileInfo(sFile).fileName()),
                                QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::Yes;
}

}  // namespace

std::optional<QString> AskForFile(QWidget* pWindow, const FileRequest& tRequest) {
    FileDialog tDialog(pWindow, tRequest);
    while (tDialog.exec() == QDialog::Accepted && !tDialog.selectedFiles().isEmpty()) {
        const FileChoice tChoice = tDialog.Choice();
        if (!tChoice.bAsk || MayReplace(pWindow, tRequest, tChoice.sFile)) return tChoice.sFile;
        const QFileInfo tRefused(tDialog.selectedFiles().constFirst());
        tDialog.setDirectory(tRefused.absolutePath());
        tDialog.selectFile(tRefused.fileName());
    }
    return std::nullopt;
}

}  // namespace toolkit
