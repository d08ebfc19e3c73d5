// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/window/report_file.h"

#include <sys/stat.h>

#include <QString>
#include <QStringDecoder>
#include <cerrno>
#include <cstring>

#include "designer/document/source_tree.h"
#include "platform/contracts/runtime.h"
#include "platform/posix/atomic_file.h"
#include "platform/posix/small_file.h"

namespace designer {
namespace {

constexpr std::string_view Utf8Mark = "\xef\xbb\xbf";

}  // namespace

std::optional<FileStamp> StampOf(const std::filesystem::path& file) {
    struct stat status {};
    if (stat(file.c_str(), &status) != 0) {
        return std::nullopt;
    }
    constexpr std::int64_t Second = 1'000'000'000;
    return FileStamp{status.st_mtim.tv_sec * Second + status.st_mtim.tv_nsec, status.st_size, status.st_ino};
}

std::string ReadReportFile(const std::filesystem::path& file) {
    const auto bytes = ReadSmallFile(file, SourceLimits().bytes);
    if (bytes) {
        return *bytes;
    }
    const int code = errno;
    if (code == ENOENT || code == ENOTDIR) {
        throw RuntimeError(err::FileNotFound, "\"" + file.string() + "\" does not exist");
    }
    const std::string why = code == EOVERFLOW ? "is larger than 64 MB" : std::strerror(code);
    throw RuntimeError(err::PathFileAccess, "\"" + file.string() + "\" cannot be read: " + why);
}

void WriteReportFile(const std::filesystem::path& file, std::string_view bytes) {
    AtomicFile target(file, AtomicFile::IfThere::Replace, AtomicFile::Readers::Mask);
    target.Write(bytes);
    target.Commit();
}

PlainText PlainTextOf(std::string_view bytes) {
    PlainText plain;
    plain.hasMark = bytes.substr(0, Utf8Mark.size()) == Utf8Mark;
    if (plain.hasMark) {
        bytes.remove_prefix(Utf8Mark.size());
    }
    const QByteArrayView view(bytes.data(), static_cast<qsizetype>(bytes.size()));
    QStringDecoder decoder(QStringDecoder::Utf8);
    QString text = decoder(view);
    plain.isLatin1 = decoder.hasError();
    if (plain.isLatin1) {
        text = QString::fromLatin1(view);
    }
    const qsizetype line = text.indexOf('\n');
    plain.hasReturns = line > 0 && text[line - 1] == '\r';
    text.replace("\r\n", "\n").replace('\r', '\n');
    plain.text = text.toStdString();
    return plain;
}

std::string BytesOf(const PlainText& plain) {
    QString text = QString::fromStdString(plain.text);
    if (plain.hasReturns) {
        text.replace('\n', "\r\n");
    }
    const bool fitsLatin1 = QString::fromLatin1(text.toLatin1()) == text;
    const std::string bytes =
        plain.isLatin1 && fitsLatin1 ? text.toLatin1().toStdString() : text.toStdString();
    return (plain.hasMark ? std::string(Utf8Mark) : std::string()) + bytes;
}

}  // namespace designer
