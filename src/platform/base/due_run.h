// Which due run the mails of this process belong to.
#pragma once

#include <string>

namespace MAPI {

// Stands around one run of a schedule or package that was due. A run that is tried again has the same
// identity, so that a server or a reader can tell that two messages are copies of each other; the next due
// moment, another schedule and another store have other ones.
class DueRun {
 public:
    // `due` is the moment that the run stands for, in any form that does not change from try to try.
    DueRun(const std::string& store, const std::string& kind, const std::string& key, const std::string& due)
        : m_before(Current()) {
        Current() = store + '\n' + kind + '\n' + key + '\n' + due;
    }
    ~DueRun() { Current() = m_before; }
    DueRun(const DueRun&) = delete;
    DueRun& operator=(const DueRun&) = delete;

    // For Message::Identity. Empty outside of a due run: a run on demand and an alert are each the only one.
    static const std::string& Identity() { return Current(); }

 private:
    static std::string& Current() {
        static std::string identity;
        return identity;
    }

    std::string m_before;
};

}  // namespace MAPI
