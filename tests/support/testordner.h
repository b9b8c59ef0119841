#pragma once

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace tarvel {

/// Writes the file anew; returns @p pfad.
inline QString lege(const QString& pfad, const QByteArray& inhalt = {}) {
    QFile datei(pfad);
    EXPECT_TRUE(datei.open(QIODevice::WriteOnly) && datei.write(inhalt) == inhalt.size())
        << qPrintable(pfad);
    return pfad;
}

/// "(no file)" when it cannot be read, so that it is not taken for an empty one.
inline QByteArray liesGanz(const QString& pfad) {
    QFile datei(pfad);
    return datei.open(QIODevice::ReadOnly) ? datei.readAll() : QByteArray("(no file)");
}

/// A folder for the files of one test, reached by their names.
class Testordner : public QTemporaryDir {
public:
    using QTemporaryDir::QTemporaryDir;

    QString schreibe(const QString& name, const QByteArray& inhalt = {}) const {
        return lege(filePath(name), inhalt);
    }
    [[nodiscard]] QByteArray lies(const QString& name) const { return liesGanz(filePath(name)); }
};

} // namespace tarvel
