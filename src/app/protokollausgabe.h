#pragma once

#include "app/umgebung.h"
#include "lang/hinweise.h"
#include "lang/protokolltexte.h"
#include "print/druckerwahl.h"
#include "print/protokollseite.h"
#include "results/arbeitsplatz.h"

#include <QDialog>
#include <QPointer>

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace tarvel {

class Messplatz;
class Vorschau;

/// The report of the open examination: its preview, the print dialog, and the editor of the user's
/// own wording.
class Protokollausgabe {
public:
    /// Everything handed over outlives this. The preview is made here and belongs to the window it
    /// is put into.
    Protokollausgabe(const Umgebung& umgebung, const Arbeitsplatz& arbeitsplatz);
    ~Protokollausgabe();

    /// Called with what is to be said of a report that was written.
    void beiHinweis(std::function<void(const Hinweis&)> hinweis) {
        beiHinweis_ = std::move(hinweis);
    }
    /// Called when a page is to be seen; those of the appendix follow page 1 or 2.
    void beiSeitenwahl(std::function<void(int seite)> wahl) { beiSeitenwahl_ = std::move(wahl); }
    /// Where the scans of the wings are; it outlives this.
    void setzeMessplatz(Messplatz& messplatz) { messplatz_ = &messplatz; }

    [[nodiscard]] QWidget& vorschau() const;
    /// Pages of the kind of report that the settings ask for, without its appendix.
    [[nodiscard]] int seitenzahl() const;

    /// Lays out a page in the preview, the last for one that this report has not.
    void zeigeSeite(int nummer);
    /// Lays the preview out anew while it is seen. To be called after every change of what the
    /// report says.
    void aktualisiere();

    /// Opens the print dialog `Drucken_`, unless the examination has no wings or the user does not
    /// want to print with values missing. @p ordner is where a PDF file is proposed.
    void drucke(QWidget* fenster, const QString& ordner);
    /// Opens the translation editor `Übersetz`.
    void übersetze(QWidget* fenster);
    /// Asks what becomes of texts that the editor has not stored yet. False when the user wants to
    /// go on with them, or when they could not be stored.
    [[nodiscard]] bool verlasseÜbersetzung();

    /// Brings back the default printer of the start, after a crash of the one before.
    void merkeDrucker();
    void stelleDruckerHer() { druckerwahl_.stelleHer(); }

private:
    struct Vorlage {
        Protokolldaten daten;
        Briefkopfgrafik grafik;
    };
    /// With @p bilder the wings of the appendix are cut out of their scans.
    [[nodiscard]] std::shared_ptr<const Vorlage> vorlage(bool bilder) const;
    [[nodiscard]] bool istAnhang(int seite) const;
    /// What cuts wings out of their scans, for one job.
    [[nodiscard]] Flügelbild flügelbild() const;
    void stelleDruckerNachAbsturzHer();
    [[nodiscard]] Protokolltexte texte() const;
    /// Names of the values that are missing and that the settings ask to be warned of.
    [[nodiscard]] QStringList fehlendes() const;
    void zeige(std::shared_ptr<const Vorlage> vorlage);
    /// Asks whether the report shall use the user's texts, unless it does.
    void bieteTexteAn();

    std::function<void(int seite)> beiSeitenwahl_;
    std::function<void(const Hinweis&)> beiHinweis_;
    Messplatz* messplatz_ = nullptr;
    /// Wings of the appendix as they were cut out last, so that typing does not read scans again.
    using Flügelschnitte = std::vector<std::pair<Flügelmessung, QImage>>;
    mutable Flügelschnitte schnitte_;
    Umgebung umgebung_;
    const Arbeitsplatz& arbeitsplatz_;
    const Untersuchung& untersuchung_;
    Druckerwahl druckerwahl_;
    Vorschau* vorschau_;
    QPointer<QDialog> übersetz_;
    /// The texts that the editor is trying out; the preview shows them until it closes.
    std::optional<Protokollfelder> probe_;
    int seite_ = 1;
};

} // namespace tarvel
