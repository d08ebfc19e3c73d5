// Work with servers and programs, away from the window.
#pragma once

#include <QObject>
#include <functional>
#include <stop_token>
#include <string>
#include <thread>

// One piece of work at a time, on a thread of its own. Its result comes back as a signal in the window's own
// thread. Going away stops the work and waits for it, a second or so.
class MailJob : public QObject {
    Q_OBJECT
 public:
    // What happened, as lines for a person; raises when it fails. It must not touch anything of the window.
    using Work = std::function<std::string(const std::stop_token&)>;

    explicit MailJob(QObject* parent) : QObject(parent) {}

    void Start(Work work);
    void Stop();

 signals:
    void Ended(const QString& text);

 private:
    std::jthread m_thread;
};
