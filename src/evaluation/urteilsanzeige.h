#pragma once

#include "evaluation/beurteilung.h"
#include "lang/texte.h"

#include <QWidget>

class QLabel;

namespace tarvel {

/// One sentence why a check failed: "1R: 4 %, erlaubt 0 %".
[[nodiscard]] QString mangeltext(const Prüfwert& mangel, const Texte& texte,
                                 const Zahlenformat& format);

/// The verdict on the sample with its reasons, as it stands now.
class Urteilsanzeige : public QWidget {
public:
    explicit Urteilsanzeige(const Texte& texte, QWidget* parent = nullptr);

    /// @p rasse name of the race that the sample was judged by, @p format of the limits.
    void zeige(const Beurteilung& beurteilung, const QString& rasse, const Zahlenformat& format);

private:
    void beschrifte();
    [[nodiscard]] QString fehlertext(Anteilfehler fehler) const;

    const Texte& texte_;
    Beurteilung beurteilung_;
    QString rasse_;
    Zahlenformat format_;
    QLabel* überschrift_;
    QLabel* lab_Urteil_;
    QLabel* lab_Mängel_;
};

} // namespace tarvel
