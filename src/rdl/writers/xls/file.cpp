// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/xls/file.h"

#include <gsf/gsf-outfile-msole.h>
#include <gsf/gsf-outfile.h>
#include <gsf/gsf-output-stdio.h>

#include <cstdio>
#include <string>

#include "rdl/api/host.h"
#include "rdl/values/error.h"

namespace rdl::writers {

struct XlsFile::Parts {
    std::FILE* file = nullptr;
    GsfOutput* sink = nullptr;
    GsfOutfile* compound = nullptr;
    GsfOutput* stream = nullptr;

    // Innermost first.
    bool Close() {
        bool good = true;
        if (stream) {
            good = gsf_output_close(stream) && good;
            g_object_unref(stream);
            stream = nullptr;
        }
        if (compound) {
            good = gsf_output_close(GSF_OUTPUT(compound)) && good;
            g_object_unref(compound);
            compound = nullptr;
        }
        if (sink) {
            g_object_unref(sink);  // closed with the compound file
            sink = nullptr;
        }
        return good;
    }
    ~Parts() {
        Close();
        if (file) {
            std::fclose(file);
        }
    }
};

XlsFile::XlsFile() : m_parts(std::make_unique<Parts>()) {
    m_parts->file = fdopen(TheHost().OpenTemporaryFile(), "w+b");
    if (!m_parts->file) {
        throw Error("No temporary file can be made for the Excel workbook");
    }
    m_parts->sink = gsf_output_stdio_new_FILE("workbook", m_parts->file, TRUE);
    m_parts->compound = gsf_outfile_msole_new(m_parts->sink);
    m_parts->stream = gsf_outfile_new_child(m_parts->compound, "Workbook", FALSE);
}

XlsFile::~XlsFile() = default;

void XlsFile::Append(std::string_view bytes) {
    if (!bytes.empty() &&
        !gsf_output_write(m_parts->stream, bytes.size(), reinterpret_cast<const guint8*>(bytes.data()))) {
        throw Error("The temporary file of the Excel workbook cannot be written: the disk is full");
    }
}

void XlsFile::Finish(Output& output) {
    if (!m_parts->Close() || std::fflush(m_parts->file) != 0) {
        throw Error("The temporary file of the Excel workbook cannot be written: the disk is full");
    }
    std::rewind(m_parts->file);
    std::string piece(256u << 10, '\0');
    std::size_t read = 0;
    while ((read = std::fread(piece.data(), 1, piece.size(), m_parts->file)) > 0) {
        output.Write(piece.data(), read);
    }
}

}  // namespace rdl::writers
