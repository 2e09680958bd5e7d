// The files of a script: they live under a temporary folder that stands for "/". A name can be marked so that opening
// it for writing or reading fails, which no permission would achieve for a privileged user.
#pragma once

#include <QString>
#include <QTemporaryDir>
#include <map>
#include <string>
#include <string_view>

namespace scenarios {

class ScriptFiles {
public:
    void Put(const QString& sName, std::string_view sContent);
    void Mark(const QString& sName, bool bUnwritable, bool bUnreadable);

    // The path that a file dialog answers for this name. Where the name is marked, the path of nothing.
    QString DialogAnswer(const QString& sName, bool bSave);

    // Contents by name; names as the script gave them.
    std::map<QString, std::string> Contents() const;

private:
    struct Marks {
        bool bUnwritable = false;
        bool bUnreadable = false;
    };
    QString PathOf(const QString& sName);

    QTemporaryDir m_tFolder;
    std::map<QString, QString> m_sNames;  // by path
    std::map<QString, Marks> m_tMarks;    // by path
};

}  // namespace scenarios
