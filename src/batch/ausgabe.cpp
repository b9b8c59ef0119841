#include "batch/ausgabe.h"

#include "evaluation/rassen.h"
#include "evaluation/standarddatei.h"
#include "lang/zielwahl.h"
#include "measure/textdatei.h"
#include "platform/dateiausgabe.h"
#include "results/datenbankfehler.h"
#include "results/ergebnistabelle.h"
#include "results/tagessicherung.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QIODevice>

#include <algorithm>
#include <atomic>

namespace tarvel {

using namespace Qt::StringLiterals;

Zahlenformat zahlenformat(Sprache sprache) {
    return sprache == Sprache::Englisch ? Zahlenformat{}
                                        : Zahlenformat{.dezimal = u',', .tausender = u'.'};
}

QString sichtbar(const QString& text, bool mehrzeilig) {
    QString ergebnis;
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        const bool dreht = (u >= 0x202A && u <= 0x202E) || (u >= 0x2066 && u <= 0x2069);
        if ((c.category() != QChar::Other_Control && !dreht) ||
            (mehrzeilig && (c == u'\n' || c == u'\t'))) {
            ergebnis += c;
        } else {
            ergebnis += (u < 0x100 ? u"\\x"_s : u"\\u"_s) +
                        QString::number(u, 16).rightJustified(2, u'0').toUpper();
        }
    }
    return ergebnis;
}

QByteArray ausgabetext(const Batchumgebung& umgebung, const QString& ziel, const QByteArray& text) {
    const bool gezeigt = umgebung.zeigtAusgabe && (ziel.isEmpty() || ziel == u"-");
    return gezeigt ? sichtbar(QString::fromUtf8(text), true).toUtf8() : text;
}

void melde(const Batchumgebung& umgebung, const QString& datei, const QString& grund,
           std::optional<int> zeile) {
    const QString ort = zeile ? u"%1:%2: "_s.arg(datei, QString::number(*zeile)) : datei + u": "_s;
    umgebung.fehler.write((sichtbar(ort + grund) + u'\n').toUtf8());
}

void melde(const Batchumgebung& umgebung, const QString& datei, const Leseproblem& problem) {
    melde(umgebung, datei, text(problem, umgebung.texte), problem.zeile);
}

namespace {

void meldeUnlesbar(const Batchumgebung& umgebung, const QString& datei) {
    const QString grund = datei == Standardstrom
                              ? umgebung.texte(Meldung::DateiLesefehler).arg(datei)
                              : textUnlesbar(datei, umgebung.texte);
    melde(umgebung, datei, grund, 1);
}

} // namespace

std::optional<QByteArray> liesOderMelde(const Batchumgebung& umgebung, const QString& datei) {
    if (datei == Standardstrom) {
        QByteArray alles; // a pipe gives what is there just now
        while (alles.size() <= GrößteTextdatei) {
            QByteArray teil(GrößteTextdatei + 1 - alles.size(), Qt::Uninitialized);
            const qint64 anzahl = umgebung.eingabe.read(teil.data(), teil.size());
            if (anzahl < 0) {
                meldeUnlesbar(umgebung, datei);
                return std::nullopt;
            }
            if (anzahl == 0) {
                break;
            }
            alles += teil.first(anzahl);
        }
        return alles;
    }
    std::optional<QByteArray> bytes = strominhalt(datei);
    if (!bytes) {
        meldeUnlesbar(umgebung, datei);
    }
    return bytes;
}

bool wäreErgebnisdatei(const Batchumgebung& umgebung, const QString& ziel) {
    constexpr QByteArrayView Anfang("SQLite format 3");
    QFile datei(ziel);
    if (!QFileInfo(ziel).isFile() || !datei.open(QIODevice::ReadOnly) ||
        datei.read(Anfang.size()) != Anfang) {
        return false;
    }
    try {
        Ergebnistabelle(ziel).öffneProbeweise();
    } catch (const Datenbankfehler& fehler) {
        if (fehler.grund() == Datenbankgrund::OhneTabelle) {
            return false;
        }
    }
    melde(umgebung, ziel, umgebung.texte(Meldung::ZielIstErgebnisdatei));
    return true;
}

void sichereTäglich(const Batchumgebung& umgebung, const Einstellungen& einstellungen,
                    const QString& datenbank) {
    if (!einstellungen.schalter(Einstellung::Tagessicherung)) {
        return;
    }
    try {
        sichereTag(datenbank, umgebung.heute, std::atomic<bool>(false));
    } catch (const Datenbankfehler& fehler) {
        const QString grund = meldungstext(umgebung.texte, fehler);
        melde(umgebung, datenbank,
              fehler.grund() == Datenbankgrund::ZuGroßZumSichern
                  ? grund
                  : umgebung.texte(Meldung::TagessicherungGescheitert).arg(grund));
    }
}

Status schreibe(const Batchumgebung& umgebung, const QString& ziel, const QByteArray& inhalt) {
    if (ziel.isEmpty() || ziel == Standardstrom || istStandardausgabe(systempfad(ziel))) {
        return umgebung.ausgabe.write(inhalt) == inhalt.size() ? Status::Gut : Status::NichtLesbar;
    }
    if (wäreErgebnisdatei(umgebung, ziel)) {
        return Status::NichtLesbar;
    }
    const bool keineDatei =
        istOffen(systempfad(ziel)) || dateiart(systempfad(ziel)) == Dateiart::Sonstige;
    const std::optional<QString> grund =
        keineDatei ? schreibeHinein(ziel, inhalt) : schreibeDatei(ziel, inhalt);
    if (!grund) {
        return Status::Gut;
    }
    melde(umgebung, ziel, nichtGeschrieben(umgebung.texte, ziel, *grund).replace(u'\n', u' '));
    return Status::NichtLesbar;
}

std::optional<Einstellungen> ladeEinstellungen(const Batchumgebung& umgebung, const QString& ini) {
    const QFileInfo info(ini);
    if (!ini.isEmpty() && !(info.isFile() && info.isReadable())) {
        meldeUnlesbar(umgebung, ini);
        return std::nullopt;
    }
    return Einstellungen(ini);
}

std::optional<Rassenwahl> wähleRasse(const Batchumgebung& umgebung,
                                     const Einstellungen& einstellungen, const QString& name) {
    const QStringList rassen = rassenliste(einstellungen);
    const auto letzte = static_cast<int>(rassen.size()) - 1;
    int position = std::clamp<int>(einstellungen.zahl(Einstellung::Rasse), 0, letzte);
    if (!name.isEmpty()) {
        const auto stelle = std::find_if(rassen.begin(), rassen.end(), [&name](const QString& r) {
            return r.compare(name, Qt::CaseInsensitive) == 0;
        });
        if (stelle == rassen.end()) {
            melde(umgebung, u"tarvel-batch"_s,
                  u"'--race' takes %1, not '%2'."_s.arg(rassen.join(u", "_s), name));
            return std::nullopt;
        }
        position = static_cast<int>(stelle - rassen.begin());
    }
    return Rassenwahl{position, rassen[position], ladeRassestandard(position + 1, einstellungen)};
}

bool nimmStandard(const Batchumgebung& umgebung, const QString& datei, Rassenwahl& rasse) {
    const std::optional<QByteArray> bytes = liesOderMelde(umgebung, datei);
    if (!bytes) {
        return false;
    }
    const auto gelesen = liesStandarddatei(*bytes);
    if (const auto* fehler = std::get_if<Standardfehler>(&gelesen)) {
        melde(umgebung, datei, fehlertext(*fehler, umgebung.texte));
        return false;
    }
    const auto& standard = std::get<Standarddatei>(gelesen);
    rasse.name = standard.Rasse;
    rasse.standard = standard.standard;
    return true;
}

} // namespace tarvel
