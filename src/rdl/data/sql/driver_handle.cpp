// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/sql/driver_handle.h"

#include <dlfcn.h>

#include <QSqlResult>
#include <QVariant>
#include <cstdint>
#include <initializer_list>

namespace rdl::data {
namespace {

// A function of a library that is loaded already; null when it is not. The library stays loaded, as the
// driver that brought it does.
template <typename Function>
Function Loaded(std::initializer_list<const char*> libraries, const char* name) {
    for (const char* file : libraries) {
        void* library = dlopen(file, RTLD_LAZY | RTLD_NOLOAD);
        if (!library) {
            continue;
        }
        void* found = dlsym(library, name);
        dlclose(library);
        if (found) {
            return reinterpret_cast<Function>(found);
        }
    }
    return nullptr;
}

void* HandleOf(const QVariant& handle, const char* type) {
    return handle.isValid() && qstrcmp(handle.typeName(), type) == 0
               ? *static_cast<void* const*>(handle.constData())
               : nullptr;
}

}  // namespace

void LimitOdbcTime(const QSqlQuery& query, int seconds) {
    using SetStatementAttribute = short (*)(void* statement, int attribute, void* value, int length);
    constexpr int QueryTimeout = 0;  // SQL_ATTR_QUERY_TIMEOUT
    void* statement = HandleOf(query.result()->handle(), "SQLHANDLE");
    const auto set = Loaded<SetStatementAttribute>({"libodbc.so.2"}, "SQLSetStmtAttr");
    if (statement && set) {
        // The interface takes numbers in the place of pointers.
        // NOLINTNEXTLINE(performance-no-int-to-ptr)
        set(statement, QueryTimeout, reinterpret_cast<void*>(static_cast<std::uintptr_t>(seconds)), 0);
    }
}

bool RestrictMySql(const QSqlDriver& driver) {
    using SetOption = int (*)(void* connection, int option, const void* value);
    using SetServerOption = int (*)(void* connection, int option);
    constexpr int LocalInfile = 8;         // MYSQL_OPT_LOCAL_INFILE
    constexpr int MultiStatementsOff = 1;  // MYSQL_OPTION_MULTI_STATEMENTS_OFF
    const std::initializer_list<const char*> libraries = {"libmariadb.so.3", "libmysqlclient.so.21",
                                                          "libmysqlclient.so.24"};
    // Qt names the type as its compiler does.
    const QVariant handle = driver.handle();
    void* known = HandleOf(handle, "MYSQL*");
    void* connection = known ? known : HandleOf(handle, "st_mysql*");
    const auto option = Loaded<SetOption>(libraries, "mysql_options");
    const auto serverOption = Loaded<SetServerOption>(libraries, "mysql_set_server_option");
    const unsigned off = 0;
    return connection && option && serverOption && option(connection, LocalInfile, &off) == 0 &&
           serverOption(connection, MultiStatementsOff) == 0;
}

}  // namespace rdl::data
