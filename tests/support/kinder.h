#pragma once

#include <QObject>
#include <QStringList>

#include <stdexcept>

namespace tarvel {

/// The child with an object name. When it is missing, the error lists the names there are, so that
/// a red test tells what the control is called now.
template <typename T>
T& kind(const QObject& eltern, const QString& name) {
    if (auto* gefunden = eltern.findChild<T*>(name)) {
        return *gefunden;
    }
    QStringList namen;
    const QList<T*> alle = eltern.findChildren<T*>();
    for (const T* objekt : alle) {
        namen << objekt->objectName();
    }
    namen.removeAll(QString());
    throw std::runtime_error(
        qPrintable(QStringLiteral("no control '%1' of this kind; there are: %2")
                       .arg(name, namen.join(QStringLiteral(", ")))));
}

} // namespace tarvel
