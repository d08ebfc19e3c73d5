// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/docx/zip.h"

#include <gsf/gsf-outfile-zip.h>
#include <gsf/gsf-outfile.h>
#include <gsf/gsf-output-stdio.h>

#include "rdl/format/format.h"
#include "rdl/writers/common/temporary_file.h"

namespace rdl::writers {

struct DocxZip::Parts {
    TemporaryFile file{"the Word document"};
    GsfOutput* sink = nullptr;
    GsfOutfile* archive = nullptr;
    GDateTime* time = nullptr;

    bool Close() {
        bool good = true;
        if (archive) {
            good = gsf_output_close(GSF_OUTPUT(archive));
            g_object_unref(archive);
            archive = nullptr;
        }
        if (sink) {
            good = gsf_output_close(sink) && good;
            g_object_unref(sink);
            sink = nullptr;
        }
        return good;
    }
    ~Parts() {
        Close();
        if (time) {
            g_date_time_unref(time);
        }
    }
};

// A part while it is written; the archive takes one at a time.
class DocxZip::Part {
 public:
    // The library names methods of compression after levels.
    Part(Parts& parts, const std::string& name, GsfZipCompressionMethod method)
        : m_parts(parts),
          m_part(gsf_outfile_new_child_full(parts.archive, name.c_str(), FALSE, "compression-level",
                                            static_cast<int>(method), "modtime", parts.time, nullptr)) {
        if (!m_part) {
            throw m_parts.file.Full();
        }
    }
    ~Part() {
        if (!gsf_output_is_closed(m_part)) {
            gsf_output_close(m_part);
        }
        g_object_unref(m_part);
    }
    Part(const Part&) = delete;
    Part& operator=(const Part&) = delete;
    void Write(std::string_view bytes) {
        if (!bytes.empty() &&
            !gsf_output_write(m_part, bytes.size(), reinterpret_cast<const guint8*>(bytes.data()))) {
            throw m_parts.file.Full();
        }
    }
    void Close() {
        if (!gsf_output_close(m_part)) {
            throw m_parts.file.Full();
        }
    }

 private:
    Parts& m_parts;
    GsfOutput* m_part;
};

DocxZip::DocxZip(std::int64_t nowTicks) : m_parts(std::make_unique<Parts>()) {
    m_parts->sink = gsf_output_stdio_new_FILE("document", m_parts->file.stream(), TRUE);
    m_parts->archive = gsf_outfile_zip_new(m_parts->sink, nullptr);
    m_parts->time = g_date_time_new_from_unix_utc((nowTicks - MakeTicks(1970, 1, 1)) / TicksPerSecond);
}

DocxZip::~DocxZip() = default;

void DocxZip::Add(const std::string& name, std::string_view content) {
    Add(name, [content](const Spool::Take& take) { take(content); });
}

void DocxZip::Add(const std::string& name, Spool& content) {
    Add(name, [&content](const Spool::Take& take) { content.Read(take); });
}

void DocxZip::Add(const std::string& name, const std::function<void(const Spool::Take&)>& fill) {
    Part part(*m_parts, name, GSF_ZIP_DEFLATED);
    fill([&part](std::string_view piece) { part.Write(piece); });
    part.Close();
}

void DocxZip::AddStored(const std::string& name, std::string_view content) {
    Part part(*m_parts, name, GSF_ZIP_STORED);
    part.Write(content);
    part.Close();
}

void DocxZip::Finish(Output& output) {
    if (!m_parts->Close()) {
        throw m_parts->file.Full();
    }
    m_parts->file.CopyTo(output);
}

}  // namespace rdl::writers
