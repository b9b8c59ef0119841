#include "results/zusammenfuehrung.h"

#include "results/ergebnisdatei.h"
#include "results/nummernvergabe.h"

#include <QCryptographicHash>

#include <SQLiteCpp/Statement.h>

#include <algorithm>
#include <array>
#include <map>
#include <set>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t Gruppe = 64;

/// A row by its content, also where that could not be understood.
QString quellmarke(const Rohsatz& zeile) {
    QString marke = satzmarke(zeile.satz);
    if (!zeile.satz.unlesbar.isEmpty()) {
        QCryptographicHash roh(QCryptographicHash::Sha1);
        for (const Rohspalte& spalte : zeile.roh) {
            if (zeile.satz.unlesbar.contains(QString::fromStdString(spalte.name))) {
                roh.addData(rohbytes(spalte.wert));
            }
        }
        marke += QString::fromLatin1(roh.result().toHex());
    }
    return marke;
}

/// Whether two rows tell of the same measuring, whatever was changed of their colony data.
bool gleicheMessung(const Ergebnissatz& a, const Ergebnissatz& b) {
    return !a.CI.trimmed().isEmpty() && a.CI == b.CI && a.HI_DV == b.HI_DV &&
           a.Grafik[0] == b.Grafik[0];
}

/// Our rows as they are looked up while the other collection is gone through.
class Unsere {
public:
    explicit Unsere(Ergebnisdatei& datei)
        : datei_(datei) {
        SQLite::Statement abfrage(datei.verbindung(),
                                  "SELECT " + datei.platz() + ", U_NR FROM Ergebnisse");
        while (abfrage.executeStep()) {
            const QString nummer = spaltentext(abfrage.getColumn(1)).text;
            stellen_.insert(Nummernvergabe::schlüssel(nummer), abfrage.getColumn(0).getInt64());
        }
        const auto herkunft = liesHerkunft(datei);
        for (auto i = herkunft.begin(); i != herkunft.end(); ++i) {
            übernommene_.insert({i->nummer, i->marke}, i.key());
        }
    }

    [[nodiscard]] std::optional<Rohsatz> lies(const QString& nummer) const {
        const auto stelle = stellen_.constFind(Nummernvergabe::schlüssel(nummer));
        std::optional<Rohsatz> satz;
        if (stelle != stellen_.constEnd()) {
            const std::array ids{*stelle};
            liesRoh(datei_, {"Ergebnisse", datei_.platz(), {}}, ids,
                    [&](const Rohsatz& gelesen) {
                        satz = gelesen;
                        return true;
                    },
                    {});
        }
        return satz;
    }
    /// The number that a row of that number and content was taken over under.
    [[nodiscard]] std::optional<QString> übernommen(const QString& nummer,
                                                    const QString& marke) const {
        const auto stelle = übernommene_.constFind({nummer, marke});
        return stelle == übernommene_.constEnd() ? std::nullopt : std::optional(*stelle);
    }

private:
    Ergebnisdatei& datei_;
    QHash<QString, qint64> stellen_;
    QHash<std::pair<QString, QString>, QString> übernommene_;
};

/// Goes through the other collection in small groups, so that nobody waits for its file.
template <typename Nimm, typename Übergehe>
void durchlaufe(const Satzquelle& quelle, std::span<const qint64> stellen, Nimm&& nimm,
                Übergehe&& übergehe) {
    bool weiter = true;
    for (std::size_t erste = 0; weiter && erste < stellen.size(); erste += Gruppe) {
        quelle.lies(
            stellen.subspan(erste, std::min(Gruppe, stellen.size() - erste)),
            [&](const Rohsatz& zeile) { return weiter = nimm(zeile); }, übergehe);
    }
}

Gegenüber gegenüber(const Rohsatz& zeile, const Unsere& unsere,
                    const QHash<QString, Herkunft>& dortÜbernommen) {
    Gegenüber fall{.stelle = zeile.id,
                   .nummer = zeile.satz.U_NR.trimmed(),
                   .züchter = zeile.satz.Z_NAME.trimmed(),
                   .datum = zeile.satz.DATUM,
                   .marke = quellmarke(zeile),
                   .unsere = {},
                   .unsereMarke = {}};
    const auto istDieselbe = [&](const QString& nummer) {
        const auto satz = unsere.lies(nummer);
        return satz && (quellmarke(*satz) == fall.marke || gleicheMessung(satz->satz, zeile.satz));
    };
    if (const auto hier = unsere.übernommen(fall.nummer, fall.marke); hier && istDieselbe(*hier)) {
        fall.stand = Zeilenstand::Gleich;
        return fall;
    }
    // What they once took over from us is ours.
    if (const auto dort = dortÜbernommen.constFind(zeile.satz.U_NR);
        dort != dortÜbernommen.constEnd() && dort->marke == fall.marke &&
        istDieselbe(dort->nummer)) {
        fall.stand = Zeilenstand::Gleich;
        return fall;
    }
    if (const auto satz = unsere.lies(fall.nummer); satz && !fall.nummer.isEmpty()) {
        fall.unsere = satz->satz.U_NR;
        fall.unsereMarke = quellmarke(*satz);
        fall.stand =
            fall.unsereMarke == fall.marke ? Zeilenstand::Gleich : Zeilenstand::Verschieden;
    }
    return fall;
}

} // namespace

Zusammenführung::Zusammenführung(QString DatenbankPfad, const Satzquelle& quelle,
                                 std::chrono::milliseconds wartezeit)
    : pfad_(std::move(DatenbankPfad))
    , quelle_(quelle)
    , wartezeit_(wartezeit) {}

bool Zusammenführung::vergleiche(const Weiter& weiter) {
    fälle_.clear();
    zuGroß_.clear();
    const std::vector<qint64> stellen = quelle_.stellen();
    const QHash<QString, Herkunft> dortÜbernommen = quelle_.herkunft();
    const int alle = static_cast<int>(stellen.size());
    return mitErgebnisdatei(pfad_, wartezeit_, [&](Ergebnisdatei& datei) {
        fälle_.reserve(stellen.size());
        const Unsere unsere(datei);
        QHash<QString, QString> gesehen; // number and content within the other collection
        int schritt = 0;
        bool gestoppt = false;
        durchlaufe(
            quelle_, stellen,
            [&](const Rohsatz& zeile) {
                gestoppt = !weiter(schritt++, alle);
                Gegenüber fall = gegenüber(zeile, unsere, dortÜbernommen);
                const QString schlüssel = Nummernvergabe::schlüssel(fall.nummer);
                const auto erster = gesehen.constFind(schlüssel);
                if (!fall.nummer.isEmpty() && erster != gesehen.constEnd()) {
                    // Of one number only one can come in under it.
                    if (fall.stand == Zeilenstand::Neu) {
                        fall.stand =
                            *erster == fall.marke ? Zeilenstand::Gleich : Zeilenstand::Verschieden;
                    }
                } else {
                    gesehen.insert(schlüssel, fall.marke);
                }
                fälle_.push_back(std::move(fall));
                return !gestoppt;
            },
            [&](const QString& nummer) {
                ++schritt;
                zuGroß_ << nummer;
            });
        return !gestoppt;
    });
}

int Zusammenführung::anzahl(Zeilenstand stand) const {
    return static_cast<int>(std::count_if(
        fälle_.begin(), fälle_.end(), [&](const Gegenüber& fall) { return fall.stand == stand; }));
}

void Zusammenführung::entscheide(Zeilenstand stand, Entscheidung entscheidung) {
    for (Gegenüber& fall : fälle_) {
        if (fall.stand == stand) {
            fall.entscheidung = entscheidung;
        }
    }
}

std::pair<Ergebnissatz, std::optional<Ergebnissatz>>
Zusammenführung::lade(const Gegenüber& fall) const {
    std::pair<Ergebnissatz, std::optional<Ergebnissatz>> beide;
    const std::array ids{fall.stelle};
    quelle_.lies(
        ids,
        [&](const Rohsatz& zeile) {
            beide.first = zeile.satz;
            return true;
        },
        [](const QString& /*nummer*/) {});
    if (fall.unsere) {
        mitErgebnisdatei(pfad_, wartezeit_, [&](Ergebnisdatei& datei) {
            const auto gelesen = lies(datei, zielstellen(datei, *fall.unsere));
            if (!gelesen.sätze.empty()) {
                beide.second = gelesen.sätze.front();
            }
        });
    }
    return beide;
}

namespace {

using Grund = Zusammenführungsbericht::Übergangen::Grund;

/// Takes rows over within one transaction.
class Übernahme {
public:
    Übernahme(Ergebnisdatei& datei, const Satzquelle& quelle, Sprache sprache)
        : datei_(datei)
        , quelle_(quelle)
        , sprache_(sprache) {}

    /// So that new numbers meet none of either collection.
    void kenneNummern(const std::vector<Gegenüber>& fälle) {
        vergabe_.kenneAlle(datei_);
        for (const Gegenüber& fall : fälle) {
            vergabe_.kenne(fall.nummer);
        }
    }

    void nimm(const Gegenüber& fall, Rohsatz zeile) {
        if (quellmarke(zeile) != fall.marke) {
            übergehe(fall, Grund::Geändert);
            return;
        }
        std::optional<qint64> eintrag;
        if (fall.entscheidung == Entscheidung::Beide || fall.nummer.isEmpty()) {
            const QString neu = vergabe_.neue(fall.nummer);
            setzeNummer(zeile, neu);
            bericht_.umbenannt.emplace_back(fall.nummer, neu);
        } else if (const auto grund = machePlatz(fall, zeile, eintrag)) {
            übergehe(fall, *grund);
            return;
        }
        setzeWörter(zeile, sprache_);
        füge(datei_, zeile.roh);
        if (eintrag) {
            vermerkeNachfolger(datei_, *eintrag, zeile.satz.U_NR, satzmarke(zeile.satz));
            bericht_.rücknahme.einträge.push_back(*eintrag);
        } else {
            bericht_.rücknahme.neue.push_back({zeile.satz.U_NR, satzmarke(zeile.satz), true});
        }
        vermerkeHerkunft(datei_, zeile.satz.U_NR, {fall.nummer, fall.marke}, quelle_.name());
        ++bericht_.übernommen;
    }

    void übergehe(const Gegenüber& fall, Grund grund) {
        bericht_.übergangen.push_back({fall.nummer, grund});
    }

    [[nodiscard]] const Zusammenführungsbericht& bericht() const { return bericht_; }

private:
    /// Puts our row into the bin, into @p eintrag, where there was one. Why not, when what stands
    /// there is not what was compared.
    std::optional<Grund> machePlatz(const Gegenüber& fall, Rohsatz& zeile,
                                    std::optional<qint64>& eintrag) {
        const std::vector<Fundstelle> hier = datei_.finde(fall.unsere.value_or(fall.nummer));
        if (!fall.unsere) {
            return hier.empty() ? std::nullopt : std::optional(Grund::Geändert);
        }
        if (hier.size() != 1) {
            return hier.empty() ? Grund::HierGelöscht : Grund::Geändert;
        }
        const std::array ids{hier.front().id};
        bool unverändert = false;
        liesRoh(
            datei_, {"Ergebnisse", datei_.platz(), {}}, ids,
            [&](const Rohsatz& satz) { return unverändert = quellmarke(satz) == fall.unsereMarke; },
            {});
        if (!unverändert) {
            return Grund::Geändert;
        }
        eintrag = hebeAuf(datei_, ids.front(), Korbanlass::Zusammengeführt);
        const Rohzeile fremde = fremdwerte(datei_, ids.front());
        zeile.roh.insert(zeile.roh.end(), fremde.begin(), fremde.end());
        entferneZeile(datei_, ids.front());
        bericht_.ersetzt << *fall.unsere;
        return std::nullopt;
    }

    Ergebnisdatei& datei_;
    const Satzquelle& quelle_;
    Sprache sprache_;
    Nummernvergabe vergabe_;
    Zusammenführungsbericht bericht_;
};

} // namespace

/// The numbers that stand in places which were not there at comparing: a row that was stored anew
/// has another place.
QSet<QString> Zusammenführung::hinzugekommene() const {
    std::set<qint64> bekannte;
    for (const Gegenüber& fall : fälle_) {
        bekannte.insert(fall.stelle);
    }
    std::vector<qint64> neue = quelle_.stellen();
    std::erase_if(neue, [&](qint64 stelle) { return bekannte.contains(stelle); });
    QSet<QString> nummern;
    const auto merke = [&](const QString& nummer) {
        nummern << Nummernvergabe::schlüssel(nummer.trimmed());
    };
    durchlaufe(
        quelle_, neue,
        [&](const Rohsatz& zeile) {
            merke(zeile.satz.U_NR);
            return true;
        },
        merke);
    return nummern;
}

QString übergehungstext(const Texte& texte, Grund grund) {
    switch (grund) {
    case Grund::HierGelöscht:
        return texte(Meldung::ZeileHierGelöscht);
    case Grund::DortGelöscht:
        return texte(Meldung::ZeileDortGelöscht);
    case Grund::Geändert:
        break;
    }
    return texte(Meldung::ZeileInzwischenGeändert);
}

std::optional<Zusammenführungsbericht> Zusammenführung::übernimm(Sprache sprache,
                                                                 const Weiter& weiter) const {
    std::vector<qint64> stellen;
    std::map<qint64, const Gegenüber*> gewünscht;
    for (const Gegenüber& fall : fälle_) {
        if (fall.entscheidung != Entscheidung::Lassen && fall.stand != Zeilenstand::Gleich) {
            stellen.push_back(fall.stelle);
            gewünscht.emplace(fall.stelle, &fall);
        }
    }
    if (stellen.empty()) {
        return Zusammenführungsbericht();
    }
    const int alle = static_cast<int>(stellen.size());
    return mitErgebnisdatei(pfad_, wartezeit_, [&](Ergebnisdatei& datei) {
        std::optional<Zusammenführungsbericht> bericht;
        Schreibvorgang vorgang(datei, Schreibvorgang::Indizes::Zuvor);
        Übernahme übernahme(datei, quelle_, sprache);
        übernahme.kenneNummern(fälle_);
        int schritt = 0;
        bool gestoppt = false;
        QSet<QString> andere; // numbers whose row is another by now
        durchlaufe(
            quelle_, stellen,
            [&](const Rohsatz& zeile) {
                gestoppt = !weiter(schritt++, alle);
                if (!gestoppt) {
                    const auto fall = gewünscht.extract(zeile.id);
                    übernahme.nimm(*fall.mapped(), zeile);
                }
                return !gestoppt;
            },
            [&](const QString& zuGroß) { andere << Nummernvergabe::schlüssel(zuGroß.trimmed()); });
        if (!gestoppt) {
            if (!gewünscht.empty()) {
                andere += hinzugekommene();
            }
            for (const auto& [stelle, fall] : gewünscht) {
                const bool nochDa = andere.contains(Nummernvergabe::schlüssel(fall->nummer));
                übernahme.übergehe(*fall, nochDa ? Grund::Geändert : Grund::DortGelöscht);
            }
            räumeKorbAuf(datei);
            vorgang.commit();
            bericht = übernahme.bericht();
        }
        return bericht;
    });
}

} // namespace tarvel
