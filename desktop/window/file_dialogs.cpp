// SPDX-License-Identifier: MIT
#include "desktop/window/file_dialogs.h"

#include <QFileInfo>
#include <QSettings>

#include "desktop/text.h"

namespace desktop {

namespace {

QString key_of(const char* purpose) { return QString("folder/") + purpose; }

} // namespace

std::filesystem::path last_folder(const char* purpose)
{
    return to_path(QSettings().value(key_of(purpose)).toString());
}

void remember_folder(const char* purpose, const QString& file)
{
    QSettings().setValue(key_of(purpose), QFileInfo(file).absolutePath());
}

std::filesystem::path with_ending(const QString& file, const char* ending)
{
    return to_path(QFileInfo(file).suffix().isEmpty() ? file + ending : file);
}

} // namespace desktop
