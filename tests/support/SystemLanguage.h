// The system's words in another language, on any machine: a catalogue of messages made by the test takes the place of
// those that may be installed.
#pragma once

#include <libintl.h>

#include <QByteArray>
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <clocale>
#include <map>

namespace support {

// While it lives the system speaks this language, in UTF-8, where the catalogue knows the English words.
class SystemLanguage {
public:
    SystemLanguage(const char* sCode, std::map<QByteArray, QByteArray> tWords) {
        tWords[""] = "Content-Type: text/plain; charset=UTF-8\n";
        const QString sFolder = QStringLiteral("%1/%2/LC_MESSAGES").arg(m_tFolder.path(), QLatin1String(sCode));
        QDir().mkpath(sFolder);
        QFile tFile(sFolder + QLatin1String("/libc.mo"));
        if (!tFile.open(QIODevice::WriteOnly)) qFatal("no catalogue");
        tFile.write(Catalogue(tWords));
        tFile.close();
        ::bindtextdomain("libc", QFile::encodeName(m_tFolder.path()).constData());
        qputenv("LANGUAGE", sCode);
        Renew();
    }
    ~SystemLanguage() {
        qunsetenv("LANGUAGE");
        Renew();
    }
    SystemLanguage(const SystemLanguage&) = delete;
    SystemLanguage& operator=(const SystemLanguage&) = delete;

private:
    // The library forgets what it has looked up when the locale is set.
    static void Renew() {
        if (std::setlocale(LC_ALL, "C.UTF-8") == nullptr) qFatal("no locale");
    }

    // The format of compiled catalogues: two tables of lengths and places, originals in order and translations.
    static QByteArray Catalogue(const std::map<QByteArray, QByteArray>& tWords) {
        constexpr quint32 HeaderSize = 28, EntrySize = 8;
        const auto lCount = static_cast<quint32>(tWords.size());
        const quint32 lTranslated = HeaderSize + lCount * EntrySize;
        QByteArray sOriginals, sTranslated, sTexts;
        const auto Enter = [&](QByteArray& sTable, const QByteArray& sText) {
            QDataStream t(&sTable, QIODevice::Append);
            t.setByteOrder(QDataStream::LittleEndian);
            t << static_cast<quint32>(sText.size())
              << lTranslated + lCount * EntrySize + static_cast<quint32>(sTexts.size());
            sTexts += sText + '\0';
        };
        for (const auto& [sOriginal, sTranslation] : tWords) {
            Enter(sOriginals, sOriginal);
            Enter(sTranslated, sTranslation);
        }
        QByteArray sHeader;
        QDataStream t(&sHeader, QIODevice::Append);
        t.setByteOrder(QDataStream::LittleEndian);
        t << quint32{0x950412DE} << quint32{0} << lCount << HeaderSize << lTranslated << quint32{0} << quint32{0};
        return sHeader + sOriginals + sTranslated + sTexts;
    }

    QTemporaryDir m_tFolder;
};

}  // namespace support
