// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/oxc_schedule/command_line.h"

namespace tools {

std::string ScheduleUsage() {
    return R"(usage: oxc-schedule COMMAND [OPTIONS]

  init                       makes the application folder and its database
  add REPORT.rpt --to LIST --at HH:MM [--daily|--weekdays|--weekly|--monthly] [--folder F] [--title T]
      [--start DATE] [--end DATE] [--format F] [--subject S] [--message M] [--formula F] [-p NAME=VALUE]...
      [--user U [--password-stdin]]
  set NAME [the options of add, but --start and --end] [--move-to F] [--no-login]
  refresh NAME [-p NAME=VALUE]...   copies its changed report file again
  list | show NAME | remove NAME | run NAME
  next [--days N]            the runs of the coming days; 7 days without N
  history [NAME] [--limit N] the newest runs first; 50 runs without N

  package add NAME --report FILE [-p NAME=VALUE]... [--report FILE ...] [--output DIR] (--to LIST | --no-mail)
      --at HH:MM [--daily|--weekly|--monthly|--quarterly] [--start DATE] [--end DATE] [--format F]
      [--subject S] [--message M]
  package set NAME --report N -p NAME=VALUE...
  package list | show NAME | remove NAME | run NAME | history [NAME] [--limit N]
  package remove-report NAME --report N   the package goes with its last report
  folder list | add NAME [--in F] | rename OLD NEW | remove NAME
  options show | set [--poll SECONDS] [--alert WHO]

  export [FILE] [--with-passwords]      all folders, schedules and packages as JSON
  import FILE [--dry-run] [--replace]   all of them or none; - is standard input
  status [--warn SECONDS] [--critical SECONDS] [--since HOURS] [--prometheus]

  --folder F       the folder of the schedule; Desktop is the root
  --id N           the schedule or package with this number, in place of NAME
  --json           prints JSON: what is read, or what was made or changed
  --format F       pdf, html, xls, doc or rtf
  --to LIST        addresses or names of the address book, with ; between them
  --password-stdin reads the password of --user; else it comes from the variable OXC_SCHEDULE_PASSWORD
  --help, --version

Exit codes: 0 done; 1 refused or failed, with one line on standard error; 2 wrong usage. Those of status:
0 the scheduler polls; 1 late, or runs failed; 2 no poll, or no answer. docs/schedule.md describes all commands.
)";
}

}  // namespace tools
