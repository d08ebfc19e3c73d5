// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/viewer/outside_link.h"

#include <QUrlQuery>
#include <algorithm>
#include <array>

namespace viewer {
namespace {

// Mail programs know attachments by several names: only the fields of a plain mail are allowed.
bool HasLetterFieldsOnly(const QUrl& mail) {
    static const std::array fields = {"to", "cc", "bcc", "subject", "body"};
    const auto items = QUrlQuery(mail).queryItems(QUrl::FullyDecoded);
    return std::all_of(items.begin(), items.end(), [](const auto& item) {
        return std::any_of(fields.begin(), fields.end(), [&](const char* field) {
            return item.first.compare(QLatin1String(field), Qt::CaseInsensitive) == 0;
        });
    });
}

}  // namespace

QUrl OutsideLink(const QString& text) {
    QUrl url(text.trimmed(), QUrl::TolerantMode);
    const QString scheme = url.scheme();  // in lower case
    const bool web = (scheme == "http" || scheme == "https") && !url.host().isEmpty();
    const bool mail = scheme == "mailto" && HasLetterFieldsOnly(url);
    return url.isValid() && (web || mail) ? url : QUrl();
}

}  // namespace viewer
