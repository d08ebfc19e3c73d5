// SPDX-License-Identifier: GPL-3.0-or-later
#include "scheduler/Attempt.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/base/paths.h"
#include "platform/contracts/adodb.h"
#include "shared/Global.h"

namespace Global {

namespace {

struct Beginning {
    DueRun run;
    std::int64_t seconds = 0;  // since 1970-01-01 00:00 UTC
};

// The first mails that are remembered, in memory and in a file.
class Beginnings {
 public:
    static Beginnings& Instance() {
        static Beginnings beginnings;
        beginnings.Load();
        return beginnings;
    }

    // Returns the moment of the run's first mail, which is this one unless another is remembered.
    ZonedMoment Begin(const DueRun& run) {
        const ZonedMoment now = TheClock().Moment();
        // As long as mail servers keep trying (RFC 5321, section 4.5.4.1).
        constexpr std::int64_t Longest = 5LL * 24 * 3600;
        std::erase_if(m_kept, [&](const Beginning& kept) {
            // A process that is killed between the record of a run and its end leaves the run here.
            const bool isFormer =
                kept.run.kind == run.kind && kept.run.reportID == run.reportID && kept.run != run;
            return isFormer || kept.seconds > now.seconds || now.seconds - kept.seconds > Longest;
        });
        const auto found = Find(run);
        if (found != m_kept.end()) {
            return InMachineZone(found->seconds);
        }
        m_kept.push_back({run, now.seconds});
        Save();
        return now;
    }

    void Forget(const DueRun& run) {
        const auto found = Find(run);
        if (found != m_kept.end()) {
            m_kept.erase(found);
            Save();
        }
    }

 private:
    std::vector<Beginning>::iterator Find(const DueRun& run) {
        return std::find_if(m_kept.begin(), m_kept.end(),
                            [&run](const Beginning& kept) { return kept.run == run; });
    }

    void Load() {
        if (m_folder == AppPath()) {
            return;
        }
        m_folder = AppPath();
        m_file = RunNotesFile("PressroomLive.begun");
        m_kept.clear();
        for (const RunNote& note : ReadRunNotes(m_file, 1)) {
            Beginning beginning{note.run};
            const std::string& text = note.values[0];
            const char* const end = text.data() + text.size();
            const auto read = std::from_chars(text.data(), end, beginning.seconds);
            if (read.ec == std::errc() && read.ptr == end) {
                m_kept.push_back(beginning);
            }
        }
    }

    void Save() const {
        std::vector<RunNote> notes;
        for (const Beginning& kept : m_kept) {
            notes.push_back({kept.run, {std::to_string(kept.seconds)}});
        }
        WriteRunNotes(m_file, notes);
    }

    std::string m_folder;  // whose runs these are
    std::filesystem::path m_file;
    std::vector<Beginning> m_kept;
};

}  // namespace

Attempt::Attempt(const DueRun& run)
    : m_run(run),
      m_mails(ADODB::StoreIdentity(ConnectionString), WordOf(run.kind), run.reportID,
              run.date + " " + run.time, [run] { return Beginnings::Instance().Begin(run); }) {}

Attempt::~Attempt() {
    if (!m_isDelivered && MAPI::DueRun::MayBeOut()) {
        return;
    }
    try {
        Beginnings::Instance().Forget(m_run);
    } catch (...) {
        return;  // without memory: a date that is kept does no harm
    }
}

}  // namespace Global
