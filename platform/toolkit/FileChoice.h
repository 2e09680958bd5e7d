// What a file dialog is asked for, and what a name chosen in it stands for. The suffix is ours to add: a dialog told to
// do it adds it after its own question whether a file may be replaced, and to names of files that have none.
#pragma once

#include <QString>
#include <functional>

namespace toolkit {

// What a file dialog is to ask for.
struct FileRequest {
    bool bSave;  // save, asking before an existing file is replaced; else open an existing file
    QString sTitle;
    QString sFolder;     // initial folder; empty: the one last used
    QString sFileName;   // proposed name
    QString sFilter;     // "Text (*.txt)"
    QString sExtension;  // added to a name without one, "txt"
};

struct FileChoice {
    QString sFile;
    bool bAsk;  // the file exists and would be replaced, and the dialog has not asked about that very name
};

// What a dialog's answer stands for. sChosen is the path as chosen or typed; saving, the dialog has asked about it if
// it exists, and about no other. tIsFile tells whether a path names an existing file.
FileChoice ChooseFile(const FileRequest& tRequest, const QString& sChosen,
                      const std::function<bool(const QString&)>& tIsFile);

// "Text (*.txt)" as "Text (*.txt) (*.[tT][xX][tT])": some dialogs tell upper and lower case apart. Only the last
// parentheses are patterns; a dialog that hides such details shows what is before them.
QString AnyCaseFilter(const QString& sFilter);

}  // namespace toolkit
