#include "platform/rdl/data/odbc_time.h"

#include <dlfcn.h>

#include <QSqlResult>
#include <QVariant>
#include <cstdint>

namespace rdl::data {

// Qt has no word for this. The driver manager is loaded by Qt's own driver; to link it would ask for it on
// machines whose reports need no ODBC.
void LimitOdbcTime(const QSqlQuery& query, int seconds) {
    using SetStatementAttribute = short (*)(void* statement, int attribute, void* value, int length);
    constexpr int QueryTimeout = 0;  // SQL_ATTR_QUERY_TIMEOUT
    const QVariant handle = query.result()->handle();
    if (qstrcmp(handle.typeName(), "SQLHANDLE") != 0) {
        return;
    }
    void* manager = dlopen("libodbc.so.2", RTLD_LAZY | RTLD_NOLOAD);
    if (!manager) {
        return;
    }
    if (void* found = dlsym(manager, "SQLSetStmtAttr")) {
        void* statement = *static_cast<void* const*>(handle.constData());
        // The interface takes numbers in the place of pointers.
        // NOLINTNEXTLINE(performance-no-int-to-ptr)
        auto* value = reinterpret_cast<void*>(static_cast<std::uintptr_t>(seconds));
        reinterpret_cast<SetStatementAttribute>(found)(statement, QueryTimeout, value, 0);
    }
    dlclose(manager);
}

}  // namespace rdl::data
