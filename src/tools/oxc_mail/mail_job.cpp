// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/oxc_mail/mail_job.h"

#include "platform/contracts/runtime.h"

namespace {

std::string ResultOf(const MailJob::Work& work, const std::stop_token& stop) {
    try {
        return work(stop);
    } catch (...) {
        const RuntimeError error = CurrentError();
        return error.Number() == err::MailUserCancel ? "Stopped." : "Failed: " + error.Description();
    }
}

}  // namespace

void MailJob::Start(Work work) {
    m_thread = std::jthread([this, work = std::move(work)](const std::stop_token& stop) {
        QString text = QString::fromStdString(ResultOf(work, stop));
        // Runs in the thread of this object, and never after the object is destroyed.
        QMetaObject::invokeMethod(
            this, [this, text = std::move(text)] { emit Ended(text); }, Qt::QueuedConnection);
    });
}

void MailJob::Stop() {
    m_thread.request_stop();
}
