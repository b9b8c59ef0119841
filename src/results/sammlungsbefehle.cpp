#include "results/sammlungsbefehle.h"

#include "platform/fortschritt.h"
#include "results/datenbankfehler.h"
#include "results/papierkorbfenster.h"
#include "results/sammlungsquelle.h"
#include "results/tagessicherung.h"
#include "results/zeileneingabe.h"
#include "results/zusammenfuehrungsfenster.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>

#include <memory>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

Sprache sprache(const Texte& texte) {
    return texte.sprache().value_or(Sprache::Deutsch);
}

/// Progress over rows, made when their number is known.
class Zeilenfortschritt {
public:
    Zeilenfortschritt(QWidget* fenster, const Texte& texte, QString titel, Meldung stand)
        : fenster_(fenster)
        , texte_(texte)
        , titel_(std::move(titel))
        , stand_(stand) {}

    bool operator()(int schritt, int alle) {
        constexpr int Takt = 32; // so that telling takes no longer than doing
        if (schritt % Takt != 0) {
            return true;
        }
        if (!fortschritt_) {
            fortschritt_ =
                std::make_shared<Fortschritt>(fenster_, titel_, texte_(Text::Abbrechen), alle);
        }
        return fortschritt_->weiter(
            schritt, texte_(stand_).arg(QString::number(schritt + 1), QString::number(alle)));
    }

private:
    QWidget* fenster_;
    const Texte& texte_;
    QString titel_;
    Meldung stand_;
    std::shared_ptr<Fortschritt> fortschritt_; ///< copies of this go on with it
};

} // namespace

Sammlungsbefehle::Sammlungsbefehle(QString DatenbankPfad, Satzumgebung umgebung, Dialoge& dialoge,
                                   QWidget* fenster)
    : pfad_(std::move(DatenbankPfad))
    , umgebung_(std::move(umgebung))
    , dialoge_(dialoge)
    , fenster_(fenster) {}

void Sammlungsbefehle::melde(const QString& titel, const Datenbankfehler& fehler) const {
    dialoge_.meldung(titel, meldungstext(umgebung_.texte, fehler), Meldungsart::Ausruf);
}

Sammlungsänderung Sammlungsbefehle::zeigePapierkorb() const {
    try {
        Papierkorbfenster korb(pfad_, umgebung_, dialoge_, fenster_);
        korb.exec();
        return {korb.rücknahmen(), korb.ersetzte()};
    } catch (const Datenbankfehler& fehler) {
        melde(umgebung_.texte(Meldung::MenüPapierkorb), fehler);
        return {};
    }
}

Sammlungsbefehle::Rückweg Sammlungsbefehle::nimmZurück(const Rücknahme& rücknahme,
                                                       std::vector<qint64>& ids) const {
    try {
        ids = Papierkorb(pfad_).nimmZurück(rücknahme, sprache(umgebung_.texte));
        return Rückweg::Zurück;
    } catch (const Datenbankfehler& fehler) {
        melde(umgebung_.texte(Meldung::Rückgängig), fehler);
        switch (fehler.grund()) {
        case Datenbankgrund::SeitherGeändert:
        case Datenbankgrund::KorbEintragFehlt:
        case Datenbankgrund::NummerDoppelt:
            return Rückweg::Versperrt;
        default:
            return Rückweg::NichtJetzt;
        }
    }
}

QString Sammlungsbefehle::wähleDatei() const {
    const Texte& t = umgebung_.texte;
    return dialoge_.wähleDatei(t(Meldung::ZusammenführenWoher), QFileInfo(pfad_).absolutePath(),
                               t(Text::TarvelErgebnisse) + u" (*.tdb);;"_s +
                                   t(Meldung::SammlungsdateienTabelle) +
                                   u" (*.csv *.txt *.mdb);;"_s + t(Text::AlleDateien) + u" (*)"_s);
}

Sammlungsänderung Sammlungsbefehle::führeZusammen() const {
    const QString pfad = wähleDatei();
    return pfad.isEmpty() ? Sammlungsänderung()
                          : übernimmAusDatei(pfad, umgebung_.texte(Meldung::MenüZusammenführen),
                                             Entscheidung::Nehmen);
}

Sammlungsänderung Sammlungsbefehle::holeAusSicherung() const {
    const Texte& t = umgebung_.texte;
    const std::vector<Sicherung> alle = sicherungen(pfad_);
    QStringList worte;
    const QLocale zahlen(t.sprache() == Sprache::Englisch      ? QLocale::English
                         : t.sprache() == Sprache::Französisch ? QLocale::French
                                                               : QLocale::German);
    for (const Sicherung& sicherung : alle) {
        worte << vollesDatum(t, sicherung.datum) + u" ("_s +
                     zahlen.formattedDataSize(sicherung.größe, 1,
                                              QLocale::DataSizeTraditionalFormat) +
                     u')';
    }
    worte << t(Meldung::AndereDatei);
    const QString titel = t(Meldung::MenüAusSicherung);
    std::optional<int> wahl = 0;
    if (!alle.empty()) {
        wahl = dialoge_.auswahl(titel, t(Meldung::SicherungWählen), worte, 0);
    }
    if (!wahl) {
        return {};
    }
    const auto stelle = static_cast<std::size_t>(*wahl);
    const QString pfad = stelle < alle.size() ? alle[stelle].pfad : wähleDatei();
    return pfad.isEmpty() ? Sammlungsänderung()
                          : übernimmAusDatei(pfad, titel, Entscheidung::Lassen);
}

Sammlungsänderung Sammlungsbefehle::übernimmAusDatei(const QString& pfad, const QString& titel,
                                                     Entscheidung vorschlag) const {
    const Texte& t = umgebung_.texte;
    const auto öffne = [&](std::optional<Tagesfolge> folge) {
        constexpr int Unbekannt = 100;            // how long another program takes
        std::unique_ptr<Fortschritt> fortschritt; // only for what lasts
        return öffneSammlung(pfad, pfad_, folge, QDate::currentDate(), t, [&] {
            if (!fortschritt) {
                fortschritt =
                    std::make_unique<Fortschritt>(fenster_, titel, t(Text::Abbrechen), Unbekannt);
            }
            return fortschritt->weiter(0, QFileInfo(pfad).fileName());
        });
    };
    try {
        Sammlungsquelle sammlung = öffne({});
        if (sammlung.datum) {
            const Antwort antwort = dialoge_.frage(
                {.titel = titel,
                 .text = t(Meldung::TagOderMonat).arg(QFileInfo(pfad).fileName(), *sammlung.datum),
                 .mitAbbrechen = true,
                 .ja = t(Meldung::TagZuerst),
                 .nein = t(Meldung::MonatZuerst)});
            if (antwort == Antwort::Abbrechen) {
                return {};
            }
            sammlung =
                öffne(antwort == Antwort::Ja ? Tagesfolge::TagZuerst : Tagesfolge::MonatZuerst);
        }
        if (!sammlung.quelle) {
            if (!sammlung.grund.isEmpty()) {
                dialoge_.meldung(titel, sammlung.grund, Meldungsart::Ausruf);
            }
            return {};
        }
        if (!sammlung.hinweise.isEmpty()) {
            dialoge_.bericht(titel, t(Meldung::TabelleNichtÜbernommen), sammlung.hinweise);
        }
        return übernimmAus(*sammlung.quelle, titel, vorschlag);
    } catch (const Datenbankfehler& fehler) {
        melde(titel, fehler);
        return {};
    }
}

Sammlungsänderung Sammlungsbefehle::übernimmAus(const Satzquelle& quelle, const QString& titel,
                                                Entscheidung vorschlag) const {
    const Texte& t = umgebung_.texte;
    try {
        Zusammenführung zusammenführung(pfad_, quelle);
        if (!zusammenführung.vergleiche(
                Zeilenfortschritt(fenster_, t, titel, Meldung::VergleichFortschritt))) {
            return {};
        }
        QStringList hinweise;
        for (const QString& nummer : zusammenführung.zuGroß()) {
            hinweise << t(Meldung::UntersuchungZuGroß).arg(nummer);
        }
        if (!hinweise.isEmpty()) {
            dialoge_.bericht(titel, t(Meldung::ImportHinweise), hinweise);
        }
        if (zusammenführung.anzahl(Zeilenstand::Gleich) ==
            static_cast<int>(zusammenführung.fälle().size())) {
            dialoge_.meldung(titel, t(Meldung::VergleichNichts).arg(quelle.name()),
                             Meldungsart::Hinweis);
            return {};
        }
        zusammenführung.entscheide(Zeilenstand::Neu, vorschlag);
        Zusammenführungsfenster vorschau(zusammenführung, titel, quelle.name(), umgebung_,
                                         fenster_);
        if (vorschau.exec() != QDialog::Accepted) {
            return {};
        }
        const auto bericht = zusammenführung.übernimm(
            sprache(t), Zeilenfortschritt(fenster_, t, titel, Meldung::ÜbernahmeFortschritt));
        if (!bericht) {
            return {};
        }
        QStringList zeilen;
        for (const auto& [alt, neu] : bericht->umbenannt) {
            zeilen << t(Meldung::JetztUnterNummer).arg(alt, neu);
        }
        for (const auto& [nummer, grund] : bericht->übergangen) {
            zeilen << nummer + u": "_s + übergehungstext(t, grund);
        }
        const QString fertig = t(Meldung::ZusammenführungFertig)
                                   .arg(QString::number(bericht->übernommen),
                                        QString::number(bericht->umbenannt.size()),
                                        QString::number(bericht->ersetzt.size()));
        if (zeilen.isEmpty()) {
            dialoge_.meldung(titel, fertig, Meldungsart::Hinweis);
        } else {
            dialoge_.bericht(titel, fertig, zeilen);
        }
        Sammlungsänderung änderung;
        if (!bericht->rücknahme.leer()) {
            änderung = {{bericht->rücknahme}, bericht->ersetzt};
        }
        return änderung;
    } catch (const Datenbankfehler& fehler) {
        melde(titel, fehler);
        return {};
    }
}

} // namespace tarvel
