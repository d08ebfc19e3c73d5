// SPDX-License-Identifier: GPL-3.0-or-later
// Sums up the time spent inside scopes.
#pragma once

#include <chrono>

class Stopwatch {
 public:
    class Scope {
     public:
        explicit Scope(Stopwatch& watch) : m_watch(watch), m_begin(Clock::now()) {}
        ~Scope() { m_watch.m_total += Clock::now() - m_begin; }
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

     private:
        Stopwatch& m_watch;
        std::chrono::steady_clock::time_point m_begin;
    };
    double Seconds() const { return std::chrono::duration<double>(m_total).count(); }

 private:
    using Clock = std::chrono::steady_clock;
    Clock::duration m_total{};
};
