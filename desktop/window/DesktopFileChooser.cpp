#include "DesktopFileChooser.h"

#include "SoundFormats.h"

#include <QCoreApplication>
#include <QFileSystemModel>
#include <QIdentityProxyModel>
#include <QLibraryInfo>
#include <QMimeDatabase>
#include <QStandardPaths>
#include <QTranslator>

namespace kova {

namespace {

// Size, type and date of a file in Japanese; Qt's own dialog shows them in the desktop's language, or in
// English.
class JapaneseFiles : public QIdentityProxyModel {
public:
    using QIdentityProxyModel::QIdentityProxyModel;

    QVariant data(const QModelIndex &index, int role) const override {
        const auto &files = static_cast<const QFileSystemModel &>(*sourceModel());
        const QModelIndex file = mapToSource(index);
        const bool isFolder = files.isDir(file);
        if (role == Qt::DisplayRole && index.column() == 1 && !isFolder) {
            return m_japanese.formattedDataSize(files.size(file));
        }
        if (role == Qt::DisplayRole && index.column() == 2) {
            return isFolder ? QStringLiteral("フォルダ") : files.type(file);
        }
        if (role == Qt::DisplayRole && index.column() == 3) {
            return m_japanese.toString(files.lastModified(file), QLocale::ShortFormat);
        }
        return QIdentityProxyModel::data(index, role);
    }

private:
    QLocale m_japanese{QLocale::Japanese};
};

// Returns the patterns of the type's suffixes that the player supports.
QStringList patterns(const QString &contentType) {
    QStringList supported;
    for (const SoundFormat &format : soundFormats) {
        supported << QStringLiteral("*.") + QString::fromLatin1(format.suffix);
    }
    if (!contentType.endsWith(QLatin1String("/*"))) {
        const QStringList own = QMimeDatabase().mimeTypeForName(contentType).globPatterns();
        supported.removeIf([&own](const QString &pattern) { return !own.contains(pattern); });
    }
    return supported;
}

QStringList patterns(const QStringList &contentTypes) {
    QStringList all;
    for (const QString &type : contentTypes) {
        all << patterns(type);
    }
    all.removeDuplicates();
    all.sort();
    return all;
}

QString filter(const QString &name, const QStringList &patterns) {
    return name + QStringLiteral(" (") + patterns.join(u' ') + u')';
}

QString startFolder() {
    const QString music = QStandardPaths::writableLocation(QStandardPaths::MusicLocation);
    return QFileInfo(music).isDir() ? music : QDir::homePath();
}

} // namespace

QStringList fileNameFilters(const QStringList &contentTypes) {
    QStringList filters;
    if (const QStringList all = patterns(contentTypes); !all.isEmpty()) {
        filters << filter(QStringLiteral("オーディオ"), all);
    }
    for (const QString &type : contentTypes) {
        const QStringList own = patterns(type);
        if (!own.isEmpty() && !type.endsWith(QLatin1String("/*"))) {
            filters << filter(QMimeDatabase().mimeTypeForName(type).comment(), own);
        }
    }
    return filters;
}

std::optional<QString> DesktopFileChooser::chooseFile(const FileChooserRequest &request) {
    if (m_dialog) {
        return std::nullopt;
    }
    QTranslator japanese;
    if (japanese.load(QStringLiteral("qtbase_ja"), QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(&japanese);
    }
    QFileDialog dialog(nullptr, request.message, startFolder());
    m_dialog = &dialog;
    dialog.setProxyModel(new JapaneseFiles(&dialog));
    dialog.setPalette(m_palette);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setNameFilters(fileNameFilters(request.allowedContentTypes));
    dialog.setWindowModality(Qt::ApplicationModal);
    if (m_parentWindow) {
        dialog.winId(); // creates the window handle
        dialog.windowHandle()->setTransientParent(m_parentWindow);
    }
    while (dialog.exec() == QDialog::Accepted) {
        const QString file = dialog.selectedFiles().value(0);
        if (QDir::match(patterns(request.allowedContentTypes), QFileInfo(file).fileName())) {
            return file;
        } // the name of another file can be typed
    }
    return std::nullopt;
}

void DesktopFileChooser::cancel() {
    if (m_dialog) {
        m_dialog->reject();
    }
}

} // namespace kova
