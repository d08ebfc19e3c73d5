// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/document/report_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QString>
#include <QStringDecoder>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>

#include "designer/document/file_text.h"
#include "designer/document/source_tree.h"
#include "platform/contracts/runtime.h"
#include "platform/posix/atomic_file.h"
#include "platform/posix/small_file.h"
#include "platform/posix/unique_fd.h"

namespace designer {
namespace {

// The new bytes are there before what is left of longer old ones goes.
void WriteInPlace(const std::filesystem::path& file, std::string_view bytes) {
    const auto check = [&](bool isDone) {
        if (!isDone) {
            throw RuntimeError(err::PathFileAccess,
                               "\"" + file.string() + "\" cannot be written: " + std::strerror(errno));
        }
    };
    const UniqueFd target(open(file.c_str(), O_WRONLY | O_CLOEXEC));
    check(target.Get() >= 0);
    const auto size = static_cast<off_t>(bytes.size());
    errno = posix_fallocate(target.Get(), 0, std::max<off_t>(size, 1));
    check(errno != ENOSPC);
    while (!bytes.empty()) {
        const ssize_t written = write(target.Get(), bytes.data(), bytes.size());
        check(written >= 0 || errno == EINTR);
        bytes.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
    }
    check(ftruncate(target.Get(), size) == 0 && fsync(target.Get()) == 0);
}

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

bool IsSameFile(const std::filesystem::path& one, const std::filesystem::path& other) {
    std::error_code failure;
    return one == other || std::filesystem::equivalent(one, other, failure);
}

void WriteReportFile(const std::filesystem::path& file, std::string_view bytes) {
    struct stat status {};
    if (stat(file.c_str(), &status) == 0 && S_ISREG(status.st_mode) && status.st_nlink > 1) {
        WriteInPlace(file, bytes);
        return;
    }
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
