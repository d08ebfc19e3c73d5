// SPDX-License-Identifier: GPL-3.0-or-later
// Runs work with servers and programs outside the thread of the window.
#pragma once

#include <QObject>
#include <functional>
#include <stop_token>
#include <string>
#include <thread>

// Runs one piece of work at a time, on a thread of its own. The signal with the result arrives in the
// window's thread. The destructor requests a stop and waits for it, about a second.
class MailJob : public QObject {
    Q_OBJECT
 public:
    // Returns the outcome as lines for the user; raises an error on a failure. Must not touch the window.
    using Work = std::function<std::string(const std::stop_token&)>;

    explicit MailJob(QObject* parent) : QObject(parent) {}

    void Start(Work work);
    void Stop();

 signals:
    void Ended(const QString& text);

 private:
    std::jthread m_thread;
};
