// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/xls/file.h"

#include <gsf/gsf-outfile-msole.h>
#include <gsf/gsf-outfile.h>
#include <gsf/gsf-output-stdio.h>

#include "rdl/writers/common/temporary_file.h"

namespace rdl::writers {

struct XlsFile::Parts {
    TemporaryFile file{"the Excel workbook"};
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
    ~Parts() { Close(); }
};

XlsFile::XlsFile() : m_parts(std::make_unique<Parts>()) {
    m_parts->sink = gsf_output_stdio_new_FILE("workbook", m_parts->file.stream(), TRUE);
    m_parts->compound = gsf_outfile_msole_new(m_parts->sink);
    m_parts->stream = gsf_outfile_new_child(m_parts->compound, "Workbook", FALSE);
}

XlsFile::~XlsFile() = default;

void XlsFile::Append(std::string_view bytes) {
    if (!bytes.empty() &&
        !gsf_output_write(m_parts->stream, bytes.size(), reinterpret_cast<const guint8*>(bytes.data()))) {
        throw m_parts->file.Full();
    }
}

void XlsFile::Finish(Output& output) {
    if (!m_parts->Close()) {
        throw m_parts->file.Full();
    }
    m_parts->file.CopyTo(output);
}

}  // namespace rdl::writers
