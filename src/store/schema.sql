-- SPDX-License-Identifier: GPL-3.0-or-later
-- The blank database. Texts compare without regard to case; keys are never used twice.
pragma page_size = 4096;
pragma journal_mode = wal;

create table ReportScheduler(
    ReportID integer primary key autoincrement,
    ReportTitle text collate nocase,
    ReportPath text collate nocase,
    OriginalPath text collate nocase,
    SendTo text collate nocase,
    Subject text collate nocase,
    Message text collate nocase,
    StartDate text collate nocase,   -- year-month-day, like every date here
    EndDate text collate nocase,
    RunAt text collate nocase,       -- HH:MM
    Frequency text collate nocase,
    NextRun text collate nocase,
    Client text collate nocase,
    SelectionForm text collate nocase,
    Format text collate nocase,
    Parent text collate nocase,      -- the folder's name, "Desktop" for the root
    UserName text collate nocase,
    Password text,
    LoginReq text collate nocase     -- T or F
);

-- Read without an ordering clause: the rows must come in the order in which they were put in.
create table ReportParameter(
    ReportID integer,
    ParName text collate nocase,
    ParValue text collate nocase
);
create index ReportParameterReport on ReportParameter(ReportID);

create table ReportHistory(
    ReportID integer,
    LastRun text collate nocase,     -- year-month-day hour:minute:second
    Status text collate nocase,
    ErrMsg text collate nocase
);
create index ReportHistoryReport on ReportHistory(ReportID);

create table ReportBatch(
    ReportID integer primary key autoincrement,
    ClientName text collate nocase,
    BatchName text collate nocase,
    Recipients text collate nocase,
    Frequency text collate nocase,
    RunTime text collate nocase,
    StartDate text collate nocase,
    EndDate text collate nocase,
    NextRunDate text collate nocase,
    Subject text collate nocase,
    Message text collate nocase,
    Destination text collate nocase,
    MailBatch text collate nocase    -- T or F
);

create table ReportBatchDtls(
    DetailID integer primary key autoincrement,
    ReportID integer,
    ReportTitle text collate nocase, -- <number>><file name>
    ReportPath text collate nocase,
    ReportFormat text collate nocase,
    UserName text collate nocase,
    Password text
);
create index ReportBatchDtlsReport on ReportBatchDtls(ReportID);

create table ReportBatchPar(
    ParID integer primary key autoincrement,
    ReportID integer,
    DetailID integer,
    ParValue text collate nocase
);
create index ReportBatchParDetail on ReportBatchPar(DetailID);

create table ReportBatchHstry(
    ReportID text collate nocase,    -- may be empty
    LastRun text collate nocase,     -- date,time under the regional settings
    Success text collate nocase,
    ErrMsg text collate nocase
);

create table Folders(
    FolderID integer primary key autoincrement,
    FolderName text collate nocase,
    Parent integer                   -- FolderID of the folder above, 0 for the root
);

-- Work table of the package wizard; empty while none is open.
create table tmpPar(
    rptName text collate nocase,
    parName text collate nocase,
    parValue text collate nocase
);

create table clients(
    Name text collate nocase
);
