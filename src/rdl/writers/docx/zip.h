// SPDX-License-Identifier: GPL-3.0-or-later
// The ZIP archive around the parts of a document (ECMA-376 Part 2, Annex B). It grows in a temporary file.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "rdl/api/output.h"
#include "rdl/spool/spool.h"

namespace rdl::writers {

class DocxZip {
 public:
    // Every part has the time `nowTicks`, so that the same document gives the same bytes. Raises errors of
    // Host::OpenTemporaryFile.
    explicit DocxZip(std::int64_t nowTicks);
    ~DocxZip();
    DocxZip(const DocxZip&) = delete;
    DocxZip& operator=(const DocxZip&) = delete;

    // Adds a part. Raises rdl::Error if the disk is full.
    void Add(const std::string& name, std::string_view content);
    void Add(const std::string& name, Spool& content);
    // `fill` passes the content to its argument, in pieces.
    void Add(const std::string& name, const std::function<void(const Spool::Take&)>& fill);
    // The same without compression: for pictures, which are compressed already.
    void AddStored(const std::string& name, std::string_view content);
    // Writes the whole archive. Call this once, at the end.
    void Finish(Output& output);

 private:
    struct Parts;
    class Part;
    std::unique_ptr<Parts> m_parts;
};

}  // namespace rdl::writers
