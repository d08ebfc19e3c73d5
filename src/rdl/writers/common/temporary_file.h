// SPDX-License-Identifier: GPL-3.0-or-later
// An unnamed temporary file in which a library writes a document before it is passed on.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

#include "rdl/api/output.h"
#include "rdl/values/error.h"

namespace rdl::writers {

class TemporaryFile {
 public:
    // `document` is its name in errors. Raises errors of Host::OpenTemporaryFile.
    explicit TemporaryFile(std::string document);
    // The file for reading and writing; this owns it.
    std::FILE* stream() const { return m_stream.get(); }
    // Returns a path by which this process can open the file.
    std::string Path() const;
    // Passes the whole file on. Raises rdl::Error if it cannot be written or read.
    void CopyTo(Output& output) const;
    // Returns the error of a write that failed.
    Error Full() const;

 private:
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    std::string m_document;
    std::unique_ptr<std::FILE, Closer> m_stream;
};

}  // namespace rdl::writers
