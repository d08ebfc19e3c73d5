// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/reports/export_settings.h"

#include "platform/base/file_name.h"
#include "platform/base/paths.h"
#include "platform/posix/atomic_file.h"
#include "platform/reports/export_mail.h"
#include "platform/reports/failure.h"

namespace reports {
namespace {

const report::FormatRow& FormatOf(int code) {
    const report::FormatRow* const row = report::FindFormat(code);
    if (row == nullptr) {
        throw RuntimeError(InvalidOption, "There is no export format " + std::to_string(code));
    }
    return *row;
}

void ExportToFile(const report::FormatRow& format, const std::filesystem::path& target,
                  AtomicFile::Lasting lasting, const WriteDocument& write) {
    // Opened before the report runs: a missing folder is reported at once.
    FileOutput output(target, LargestDocument, lasting);
    write(format, target, output);
    output.Commit();
}

}  // namespace

void ExportBySettings(const ExportSettings& settings, const std::string& title, const WriteDocument& write) {
    const report::FormatRow& format = FormatOf(settings.format);
    if (settings.destination == report::DestinationMail) {
        const HeldFolder folder("oxbow-courier-export-");
        const std::filesystem::path file =
            folder.Path() / (SafeFileName(title) + "." + std::string(format.extension));
        ExportToFile(format, file, AtomicFile::Lasting::Brief, write);
        MailFile(settings.toList, settings.subject, settings.message, file);
        return;
    }
    if (settings.destination != report::DestinationDisk) {
        throw RuntimeError(InvalidOption,
                           "There is no export destination " + std::to_string(settings.destination));
    }
    const std::string& name =
        format.format == report::DocumentFormat::Html ? settings.htmlFile : settings.diskFile;
    if (name.empty()) {
        throw RuntimeError(InvalidOption, "The export has no file name");
    }
    ExportToFile(format, paths::ToMachine(name), AtomicFile::Lasting::OnDisk, write);
}

}  // namespace reports
