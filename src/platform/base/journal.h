// SPDX-License-Identifier: GPL-3.0-or-later
// Dated lines on standard error: every outcome that the system shows nowhere else (no row, no box, no mail),
// and in the scheduler every event.
//
// Each line is written in one call, so that lines of two processes do not mix. If standard error is a stream
// of the machine's journal ($JOURNAL_STREAM), a line begins with "<N>", the severity of RFC 5424,
// section 6.2.1. Writing never fails and is safe in any thread.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// Writes "2026-11-22 07:00:03 " (local time), the text and a line feed. The text becomes one line
// (platform/base/one_line.h), and of more than 8192 bytes the rest is dropped. As JSON it is an event
// "message" of level warning.
void Journal(std::string_view text);

namespace journal {

enum class Level { Error = 3, Warning = 4, Notice = 5, Info = 6 };  // the severities of RFC 5424

// A name and a value of an event.
struct Fact {
    std::string name;
    std::string value;
    bool isNumber = false;
};
Fact Text(const char* name, std::string value);
Fact Number(const char* name, std::int64_t value);
// In seconds, with three decimals.
Fact Seconds(const char* name, std::chrono::milliseconds value);

struct Event {
    Level level = Level::Info;
    std::string_view name;  // lower case with hyphens
    std::vector<Fact> facts;
    std::string sentence = {};  // for readers; may be empty
};

// Writes an event. As text it is a dated line with the sentence alone, or without a sentence with level, name
// and facts: run-done schedule=5 title="Sales". As JSON (RFC 8259) it is an object with "time" (RFC 3339),
// "level", "event", the facts and "text". An event without a sentence is dropped unless WriteEvents has
// turned events on.
void Write(const Event& event);

enum class Form { Text, Json };
void UseForm(Form form);
void WriteEvents(bool isOn);
// These facts belong to every event and, as JSON, to every line from now on: which schedule is running.
void SetContext(std::vector<Fact> facts);

}  // namespace journal
