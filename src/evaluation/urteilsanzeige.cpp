#include "evaluation/urteilsanzeige.h"

#include <QLabel>
#include <QVBoxLayout>

namespace tarvel {

using namespace Qt::StringLiterals;

QString mangeltext(const Prüfwert& mangel, const Texte& texte, const Zahlenformat& format) {
    const QString bereich = klassenbereichtext(mangel.bereich);
    const QString gemessen = QString::number(mangel.gemessen.value_or(0));
    const QString erlaubt = zahltext(mangel.erlaubt, format);
    switch (mangel.art) {
    case Prüfung::Klassen:
        return texte(Meldung::MangelKlassen).arg(bereich, gemessen, erlaubt);
    case Prüfung::Nebengipfel:
        return texte(Text::Nebengipfel) + u' ' + bereich;
    case Prüfung::Merkmal:
        break;
    }
    return texte(Meldung::MangelMerkmal).arg(mangel.name, gemessen, erlaubt);
}

Urteilsanzeige::Urteilsanzeige(const Texte& texte, QWidget* parent)
    : QWidget(parent)
    , texte_(texte)
    , überschrift_(new QLabel)
    , lab_Urteil_(new QLabel)
    , lab_Mängel_(new QLabel) {
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(4);
    QFont fett = lab_Urteil_->font();
    fett.setBold(true);
    lab_Urteil_->setFont(fett);
    lab_Urteil_->setObjectName(u"lab_Urteil"_s);
    lab_Mängel_->setObjectName(u"lab_Mängel"_s);
    for (QLabel* label : {überschrift_, lab_Urteil_, lab_Mängel_}) {
        label->setWordWrap(true);
        label->setTextFormat(Qt::PlainText);
        layout->addWidget(label);
    }
    connect(&texte_, &Texte::languageChanged, this, [this] { beschrifte(); });
    beschrifte();
}

void Urteilsanzeige::zeige(const Beurteilung& beurteilung, const QString& rasse,
                           const Zahlenformat& format) {
    beurteilung_ = beurteilung;
    rasse_ = rasse;
    format_ = format;
    beschrifte();
}

QString Urteilsanzeige::fehlertext(Anteilfehler fehler) const {
    return fehler == Anteilfehler::Überlauf
               ? texte_(Meldung::BewertungUnmöglich)
               : texte_(Meldung::MerkmaleOhnePanzer).arg(texte_(Text::Panzerzeichen));
}

void Urteilsanzeige::beschrifte() {
    überschrift_->setText(texte_(Text::Beurteilung));
    QString urteil;
    QStringList mängel;
    if (!beurteilung_.BewertungAktiv) {
        urteil = texte_(Meldung::BewertungAus);
    } else if (beurteilung_.fehler) {
        urteil = fehlertext(*beurteilung_.fehler);
    } else if (const std::optional<bool> ja = beurteilung_.urteil()) {
        // The sign says it too, for those who read no colour and no long sentence.
        urteil = (*ja ? u"✓ "_s : u"✗ "_s) + texte_(urteilssatz(*ja)) + u' ' + rasse_;
        for (const Prüfwert& mangel : beurteilung_.mängel()) {
            mängel << u"• "_s + mangeltext(mangel, texte_, format_);
        }
    } else {
        urteil = texte_(Meldung::NochKeineMessung);
    }
    lab_Urteil_->setText(urteil);
    lab_Mängel_->setText(mängel.join(u'\n'));
    lab_Mängel_->setVisible(!mängel.isEmpty());
}

} // namespace tarvel
