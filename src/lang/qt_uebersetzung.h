#pragma once

#include "lang/texte.h"

#include <QObject>
#include <QString>
#include <QTranslator>

namespace tarvel {

/// Lets the toolkit's own words (buttons, file and print dialogs, text field menus) follow the
/// language of the program. Number and date formats stay those of the system.
class QtÜbersetzung : public QObject {
public:
    /// Applies the current language at once and then every change. @p texte must outlive this.
    /// The toolkit's language files are looked for in "translations" below @p programmordner
    /// first, then where the toolkit is installed; without them its words are English.
    QtÜbersetzung(const Texte& texte, const QString& programmordner, QObject* parent = nullptr);

private:
    void wendeAn(const Texte& texte);

    QString ordner_;
    QTranslator übersetzer_;
};

} // namespace tarvel
