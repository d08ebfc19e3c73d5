// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/window/designer_settings.h"

#include <QSettings>

#include "platform/base/paths.h"

namespace designer {
namespace {

constexpr const char* RecentKey = "recent";
constexpr const char* GeometryKey = "window/geometry";
constexpr const char* StateKey = "window/state";
constexpr const char* AlphabetKey = "properties/alphabetical";
constexpr const char* NameWidthKey = "properties/nameCharacters";

QSettings Settings() {
    return QSettings(QString::fromStdString((ConfigPlace() / "designer.ini").string()), QSettings::IniFormat);
}

}  // namespace

QStringList RecentFiles() {
    return Settings().value(RecentKey).toStringList().mid(0, MostRecentFiles);
}

void AddRecentFile(const std::filesystem::path& file) {
    QStringList files = RecentFiles();
    const QString name = QString::fromStdString(file.string());
    files.removeAll(name);
    files.prepend(name);
    Settings().setValue(RecentKey, files.mid(0, MostRecentFiles));
}

void ForgetRecentFile(const QString& file) {
    QStringList files = RecentFiles();
    files.removeAll(file);
    Settings().setValue(RecentKey, files);
}

WindowLook LastWindowLook() {
    QSettings settings = Settings();
    return {settings.value(GeometryKey).toByteArray(),
            settings.value(StateKey).toByteArray(),
            {settings.value(AlphabetKey).toBool(), settings.value(NameWidthKey).toDouble()}};
}

void KeepWindowLook(const WindowLook& look) {
    QSettings settings = Settings();
    settings.setValue(GeometryKey, look.geometry);
    settings.setValue(StateKey, look.state);
    settings.setValue(AlphabetKey, look.properties.isAlphabetical);
    settings.setValue(NameWidthKey, look.properties.nameWidth);
}

}  // namespace designer
