// Reading and writing the codes of text files.
#include "platform/toolkit/FileText.h"

#include <QByteArray>
#include <algorithm>

namespace toolkit {

namespace {

QByteArray Encoded(const FileText& t) {
    const auto eMark = t.bMark ? QStringConverter::Flag::WriteBom : QStringConverter::Flag::Default;
    QStringEncoder tEncoder(t.eCode, eMark);
    return QByteArray(tEncoder(t.sText));
}

bool IsPlain(std::string_view sBytes) {
    return std::ranges::all_of(sBytes, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

}  // namespace

FileText FromFileBytes(std::string_view sBytes) {
    FileText t;
    const QByteArrayView tView(sBytes.data(), static_cast<qsizetype>(sBytes.size()));
    const auto eMarked = QStringConverter::encodingForData(tView);
    if (eMarked || !IsPlain(sBytes)) {
        t.eCode = eMarked.value_or(QStringConverter::Utf8);
        t.bMark = eMarked.has_value();
        QStringDecoder tDecoder(t.eCode);
        t.sText = QString(tDecoder(tView));
        if (!tDecoder.hasError() && Encoded(t) == tView) return t;
    }
    return {QString::fromLatin1(tView), QStringConverter::Latin1, false};
}

std::string ToFileBytes(const FileText& t) {
    FileText tWritten = t;
    const auto IsLatin1 = [](QChar c) { return c.unicode() <= 0xFF; };
    if (t.eCode == QStringConverter::Latin1 && !std::ranges::all_of(t.sText, IsLatin1)) {
        tWritten.eCode = QStringConverter::Utf8;
    }
    const std::string sBytes = Encoded(tWritten).toStdString();
    // Letters of Latin-1 in a row may look like a mark, or like those of UTF-8.
    if (tWritten.eCode != QStringConverter::Latin1 || FromFileBytes(sBytes).sText == t.sText) return sBytes;
    tWritten.eCode = QStringConverter::Utf8;
    return Encoded(tWritten).toStdString();
}

}  // namespace toolkit
