// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/FileNames.h"

#include <QMimeData>
#include <QUrl>

#include <cctype>
#include <filesystem>

namespace tessel {

namespace fs = std::filesystem;

namespace {

// Lone halves of surrogate pairs, which no UTF-8 has.
constexpr char16_t kForeign = 0xDC00;

bool isForeignByte(const QString& text, qsizetype at) {
    const char16_t code = text.at(at).unicode();
    const bool isSecondHalf = at > 0 && text.at(at - 1).isHighSurrogate();
    return code >= kForeign + 0x80 && code <= kForeign + 0xFF && !isSecondHalf;
}

int lengthOfCharacter(unsigned char first) {
    if (first < 0x80) return 1;
    if (first < 0xE0) return 2;
    return first < 0xF0 ? 3 : 4;
}

// The text of these bytes, or a null one when they are no UTF-8.
QString decoded(QByteArrayView bytes) {
    const QString text = QString::fromUtf8(bytes);
    return text.toUtf8() == bytes ? text : QString();
}

bool exists(const std::string& path) {
    std::error_code error;
    return fs::exists(path, error);
}

bool isForeignCode(const std::string& text, std::size_t at) {
    const auto isHex = [&](std::size_t i) {
        return i < text.size() && std::isxdigit(static_cast<unsigned char>(text[i])) != 0;
    };
    return text.compare(at, 2, "\\x") == 0 && isHex(at + 2) && isHex(at + 3) && text[at + 2] >= '8';
}

// The bytes that are written as legible() writes them.
std::string withForeignBytes(const std::string& text) {
    std::string bytes;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (!isForeignCode(text, at)) {
            bytes += text[at];
            continue;
        }
        bytes += static_cast<char>(std::stoi(text.substr(at + 2, 2), nullptr, 16));
        at += 3;
    }
    return bytes;
}

}  // namespace

std::string toPath(const QString& path) {
    std::string bytes;
    qsizetype taken = 0;
    for (qsizetype at = 0; at < path.size(); ++at) {
        if (!isForeignByte(path, at)) continue;
        bytes += QStringView(path).sliced(taken, at - taken).toUtf8().toStdString();
        bytes += static_cast<char>(path.at(at).unicode() - kForeign);
        taken = at + 1;
    }
    return bytes + QStringView(path).sliced(taken).toUtf8().toStdString();
}

QString fromPath(const std::string& path) {
    const QByteArrayView bytes(path.data(), static_cast<qsizetype>(path.size()));
    QString text = decoded(bytes);
    if (!text.isNull() || bytes.isEmpty()) return text;
    for (qsizetype at = 0; at < bytes.size();) {
        const auto first = static_cast<unsigned char>(bytes[at]);
        const qsizetype length = lengthOfCharacter(first);
        const QString character = at + length <= bytes.size() ? decoded(bytes.sliced(at, length)) : QString();
        text += character.isNull() ? QString(QChar(char16_t(kForeign + first))) : character;
        at += character.isNull() ? 1 : length;
    }
    return text;
}

QString legible(const QString& text) {
    QString shown;
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (isForeignByte(text, at))
            shown +=
                QStringLiteral("\\x%1").arg(QString::number(text.at(at).unicode() - kForeign, 16).toUpper());
        else
            shown += text.at(at);
    }
    return shown;
}

QString localPath(const QUrl& address) {
    if (!address.isLocalFile()) return {};
    if (!address.host().isEmpty()) return address.toLocalFile();
    const QByteArray bytes = QByteArray::fromPercentEncoding(address.path(QUrl::FullyEncoded).toLatin1());
    return bytes.contains('\0') ? QString() : fromPath(bytes.toStdString());
}

QString droppedFile(const QMimeData& data) {
    for (const QUrl& url : data.urls())
        if (QString path = localPath(url); !path.isEmpty()) return path;
    return {};
}

std::string pathMeantBy(const QString& text, const std::string& folder) {
    const auto inFolder = [&](const std::string& name) {
        return name.empty() ? name : (fs::path(folder) / name).string();
    };
    std::string asItStands = inFolder(toPath(text));
    if (exists(asItStands)) return asItStands;
    const QString trimmed = text.trimmed();
    const QString address = localPath(QUrl(trimmed));
    if (!address.isEmpty()) return toPath(address);
    const std::string named = inFolder(toPath(trimmed));
    return exists(named) ? named : inFolder(withForeignBytes(toPath(trimmed)));
}

}  // namespace tessel
