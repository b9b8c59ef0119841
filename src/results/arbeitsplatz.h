#pragma once

#include "evaluation/beurteilung.h"
#include "measure/messbefehle.h"
#include "results/ablage.h"
#include "results/schritte.h"
#include "results/sitzung.h"

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <type_traits>
#include <vector>

namespace tarvel {

/// What measuring, judging and charts take from the settings, read together.
struct Arbeitseinstellungen {
    Urteilsregeln regeln;
    int Kurvenform = 0;  ///< as stored
    int ZweiteKurve = 0; ///< as stored
    QStringList rassen;  ///< the race list
    int Rasse = 0;       ///< position of the preselected race
    Messart messart = Messart::AlleMessungen;
    int auflösung = 0; ///< in dots per inch
    int Zoomfaktor = 1;

    bool operator==(const Arbeitseinstellungen&) const = default;
};

/// Resolution and zoom that the program begins with, by the settings.
[[nodiscard]] Aufnahme aufnahmeBeimStart(const Einstellungen& einstellungen);

/// Whose colony the next examination is about: of people still to be named, or, for the next
/// colony of a visit, breeder, owner and mating of the open one.
enum class Personen { Neue, Dieselben };

/// What a command changed. It is found by comparing the state before with that after, so no command
/// can forget to say so.
struct Änderung {
    bool Punkte = false;
    bool Aufnahme = false; ///< picture, zoom, resolution, kind or number of the current wing
    bool Reihe = false;
    bool Merkmale = false;
    bool Angaben = false;
    bool Urteil = false; ///< the judgement was formed anew: wings, marks, caste or standard changed
    bool Ablage = false; ///< results file, stored number, or whether something is left to be stored
    bool Einstellungen = false;
    bool Untersuchung = false; ///< another examination is open
    bool Schritte = false;     ///< what can be undone or redone

    // What a person is to be told about it.
    Hinweis hinweis;
    std::optional<Übernahme> übernommen;
    std::optional<Rechenfehler> fehler;
    bool reiheVoll = false;

    [[nodiscard]] bool etwas() const;
};

/// The workplace: the open examination, the wing being measured, the standard it is judged by, the
/// results file in use and the journal. Everything that changes it is a command here, which ends in
/// one notice; nobody else can change it. Steps of work can be undone and redone until another
/// examination is opened.
class Arbeitsplatz final : public Messbefehle {
public:
    using Beobachter = std::function<void(const Änderung&)>;
    /// As long as it is held, the observer is called.
    using Beobachtung = std::shared_ptr<Beobachter>;

    /// @p journal full path of the journal. Everything handed over outlives the workplace.
    Arbeitsplatz(const Ablageumgebung& umgebung, Einstellungen& einstellungen,
                 Benutzerspeicher& speicher, const QString& journal);

    [[nodiscard]] Beobachtung beobachte(Beobachter beobachter);

    [[nodiscard]] const Untersuchung& untersuchung() const { return untersuchung_; }
    [[nodiscard]] const Messung& messung() const override { return messung_; }
    [[nodiscard]] const Messreihe& reihe() const override { return untersuchung_.reihe(); }
    [[nodiscard]] const Rassestandard& standard() const { return standard_; }
    [[nodiscard]] const Urteil& urteil() const { return urteil_; }
    [[nodiscard]] const Beurteilung& beurteilung() const { return urteil_.beurteilung; }
    /// The verdict that the open examination was stored with, while nothing changed that it rests
    /// on; empty when it had none.
    [[nodiscard]] std::optional<bool> gespeichertesUrteil() const;
    /// What the judgement looks at; it is valid until the next command.
    [[nodiscard]] Prüfling prüfling() const;
    [[nodiscard]] const Arbeitseinstellungen& einstellungen() const { return einstellungen_; }
    [[nodiscard]] const Ablage& ablage() const { return ablage_; }
    /// Verdict and resolution that the examination is stored with.
    [[nodiscard]] Ablagestand ablagestand() const;

    /// @name Measuring
    /// @{
    void Bild_MouseDown(Maustaste taste, int umschalt, float X, float Y) override;
    void Bild_MouseMove(Maustaste taste, int umschalt, float X, float Y) override;
    bool Bild_KeyDown(int keyCode, int umschalt) override;
    void opt_Fein_Click(int index) override;
    void zieh(int nummer, float x, float y, bool neuerZug) override;
    void schlageVor(const Messpunkte& punkte) override;
    /// Discards the points of the current wing.
    void NeuerFlügel();
    void setzeBild(const QString& pfad) override;
    void zeigtBild(const Bildkennung& bild) override { messung_.zeigtBild(bild); }
    void verlegeBild(const GesuchtesBild& bild, const QString& jetzt, QSize größe,
                     bool messung) override;
    void setzeZoom(int zoomfaktor) override;
    /// Kind and resolution that the user chose are remembered in the settings; those chosen while
    /// a wing is repeated are this wing's alone.
    void setzeMessart(Messart messart) override;
    /// A resolution that is not in the list of the box belongs to the picture alone.
    void setzeAuflösung(int dpi);
    bool wiederhole(int nummer) override;
    void gibWiederholungAuf() override;
    /// @}

    /// @name Series, marks and colony data
    /// @{
    /// False when the series holds none of the wings. A repeat of one of them ends.
    bool löscheFlügel(const std::vector<int>& nummern);
    bool löscheFlügel(int nummer) { return löscheFlügel(std::vector{nummer}); }
    /// Leaves wings out of the sample or takes them back. False when that changes nothing.
    bool lassAus(const std::vector<int>& nummern, bool aus);
    bool löscheLetzte() { return löscheFlügel(reihe().letzteNummer()); }
    void löscheAlle();
    /// Says that wings, and the picture that is shown if they lie on it, were scanned with @p dpi;
    /// see Messreihe::setzeAuflösung. False when that changes no wing.
    bool setzeAuflösung(std::span<const int> nummern, int dpi);
    void setzeMerkmale(const Merkmale& merkmale);
    /// Typing on in the same field belongs to one step, until beendeEingabe() or another command.
    void setzeAngaben(const Kolonieangaben& angaben);
    void beendeEingabe();
    /// Chooses a race of the race list by its position.
    void wähleRasse(int index);
    /// Another caste clears the body marks.
    void wähleTiere(Geschlecht tiere);
    /// The verdict that a loaded examination was stored with gives way to that of the present
    /// standard.
    void beurteileNeu();
    /// @}

    /// @name Undo
    /// @{
    /// The step that would be undone or done again; null for none.
    [[nodiscard]] const Schritt* rückgängig() const;
    [[nodiscard]] const Schritt* wiederherstellbar() const;
    /// The step that was undone or done again; nullopt when there was none.
    std::optional<Schritt> macheRückgängig();
    std::optional<Schritt> stelleWiederHer();
    /// @}

    /// @name Examination and results file
    /// @{
    /// Finds the results file; see Ablage::richteEin.
    void richteAblageEin();
    /// Reads the settings and begins with the race, kind, zoom and resolution that they name.
    void richteEin();
    bool DatenbankWählen(const QString& pfad);
    void SpracheDB() { ablage_.SpracheDB(); }
    void beginneNeue(Personen personen = Personen::Neue);
    /// The stored examination of that number. nullopt, with a message, when it cannot be read.
    std::optional<GeleseneUntersuchung> lade(const QString& nummer);
    /// Makes an examination that was read in the open one, with a number if it has none.
    /// @p auflösung in dots per inch, that of the user without one.
    void nimmEin(const Untersuchung& untersuchung, std::optional<int> auflösung,
                 std::optional<Messart> messart = {});
    /// Its row has another number by now, and so has the examination.
    void nimmUmbenannt(const QString& nummer);
    /// Its row is gone: all of it is left to be stored.
    void nimmAlsGelöscht();
    /// Another stands in its row: all of it is left to be stored, which asks then.
    void nimmAlsErsetzt();
    /// True when nothing is left to be stored, as Ablage::SpeichernDB says.
    bool speichere(Speicheranlass anlass);
    /// Without @p auflösung that of the next examination stays as the user chose it last.
    void übernimmEinstellungen(bool auflösung = true);
    /// @}

    /// @name Journal
    /// @{
    /// What a crash left; see Sitzung::lies.
    [[nodiscard]] std::optional<Sitzungsstand> liesSitzung() { return sitzung_.lies(); }
    [[nodiscard]] const QString& sitzungBeiseite() const { return sitzung_.beiseite(); }
    void setzeFort(const Sitzungsstand& stand);
    void verwirfSitzung() { sitzung_.lösche(); }
    /// From now on every change goes to the journal.
    void beginneSitzung();
    void beendeSitzung();
    /// Command word of the view, for the journal.
    void merkeAnsicht(QStringView ansicht);
    /// False when the journal could not be written last time.
    [[nodiscard]] bool gesichert() const { return gesichert_; }
    /// @}

private:
    /// All that undo brings back. Wings, the bulk of it, are shared between states.
    struct Stand {
        Kolonieangaben angaben;
        std::shared_ptr<const Messreihe> reihe;
        Merkmale merkmale;
        Messstand messung;
        Untersuchungszusatz zusatz;
        bool angabenGeändert = false;
        bool messungenGeändert = false;
    };
    struct Rückschritt {
        Schritt schritt;
        Stand vorher;
        bool mitMessung = false; ///< the step changed what is being measured
    };

    /// Every change goes through here. @p befehl returns the step that it was, if it can be undone;
    /// commands within a command belong to the outer one.
    template <typename Befehl>
    void führeAus(Befehl&& befehl);
    bool messe(const std::function<Messergebnis()>& tun);
    void schließeAb(const std::optional<Schritt>& schritt);
    void melde(const Änderung& änderung);
    void legeAb(const Schritt& schritt, const Stand& vorher, bool offen);
    std::optional<Schritt> geheZurück(std::vector<Rückschritt>& von,
                                      std::vector<Rückschritt>& nach);
    /// Puts a series that one command made in place of the present one.
    void ändereReihe(const Messreihe& neu, const Schritt& schritt);
    void vergissSchritte();
    void bewerteGespeichertes();
    [[nodiscard]] Stand stand() const;
    void sichere();
    void merkeWahl(Schrittart art);
    /// What is known of the picture that is shown.
    [[nodiscard]] std::optional<int> bildauflösung() const;
    void richteMessungEin(std::optional<int> auflösung, std::optional<Messart> messart);

    Einstellungen& ini_;
    Ablage ablage_;
    Sitzung sitzung_;
    Untersuchung untersuchung_;
    Messung messung_;
    Arbeitseinstellungen einstellungen_;
    Rassestandard standard_;
    int standardRasse_ = -1;
    std::map<QString, int> bildauflösungen_; ///< that the user chose, by picture
    Urteil urteil_;

    Stand jetzt_; ///< as the last command left it
    int tiefe_ = 0;
    Änderung änderung_; ///< of the command that runs
    std::vector<Rückschritt> zurück_;
    std::vector<Rückschritt> vor_;
    /// The step on top is typing in one field, or one drag, and what follows may belong to it.
    bool schrittOffen_ = false;
    bool bleibtOffen_ = false; ///< the command that runs is such a one

    std::vector<std::weak_ptr<Beobachter>> beobachter_;
    std::deque<Änderung> ausstehend_;
    bool meldet_ = false;
    Beobachtung journal_;

    bool sitzungLäuft_ = false;
    bool gesichert_ = true;
    QString ansicht_;
};

template <typename Befehl>
void Arbeitsplatz::führeAus(Befehl&& befehl) {
    ++tiefe_;
    std::optional<Schritt> schritt;
    if constexpr (std::is_void_v<decltype(befehl())>) {
        befehl();
    } else {
        schritt = befehl();
    }
    if (--tiefe_ == 0) {
        schließeAb(schritt);
    }
}

} // namespace tarvel
