#include "batch/messergebnis.h"

#include "measure/koordinatenausgabe.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

QString standwort(const Flügelfund& fund) {
    return fund.stand == Flügelfund::Stand::Sicher ? u"sure"_s : u"doubtful"_s;
}

QByteArray zahl(double wert, int stellen) {
    return QByteArray::number(wert, 'f', stellen);
}

QByteArray zahl(const std::optional<float>& wert) {
    return wert ? vollerWert(*wert) : QByteArray();
}

/// As a double whose text is short.
QJsonValue json(double wert, int stellen) {
    return zahl(wert, stellen).toDouble();
}

QJsonValue json(const std::optional<float>& wert) {
    return wert ? QJsonValue(vollerWert(*wert).toDouble()) : QJsonValue();
}

Indizes indizes(const Flügelmessung& m) {
    return berechneIndizes(m.punkte, m.messart, m.aufnahme);
}

/// Calls @p handlung with each wing, its number and its measurement.
template <typename Handlung>
void jeder(const std::vector<Bildmessergebnis>& ergebnisse, Messart messart,
           const Handlung& handlung) {
    for (const Bildmessergebnis& ergebnis : ergebnisse) {
        int nummer = 0;
        for (const Flügelfund& fund : ergebnis.funde) {
            handlung(ergebnis, fund, ++nummer, messung(fund, ergebnis, messart));
        }
    }
}

QByteArray alsCsv(const std::vector<Bildmessergebnis>& ergebnisse, Messart messart) {
    QByteArray kopf = "file,wing,x,y,angle,mirrored,size,score,state," + punktspalten();
    for (int p = 1; p <= Messpunkte::Anzahl; ++p) {
        kopf += ",e" + QByteArray::number(p);
    }
    CsvTabelle tabelle(kopf + ",ci,hi,dv");
    jeder(ergebnisse, messart,
          [&](const Bildmessergebnis& ergebnis, const Flügelfund& fund, int nummer,
              const Flügelmessung& m) {
              tabelle.text(ergebnis.bild);
              tabelle.zelle(QByteArray::number(nummer));
              for (const double wert : {fund.mitte.x(), fund.mitte.y(), fund.winkel}) {
                  tabelle.zelle(zahl(wert, 2));
              }
              tabelle.zelle(fund.gespiegelt ? "yes" : "no");
              tabelle.zelle(zahl(fund.größe, 4));
              tabelle.zelle(zahl(fund.güte, 4));
              tabelle.text(standwort(fund));
              schreibePunkte(tabelle, m);
              for (int p = 1; p <= Messpunkte::Anzahl; ++p) {
                  const float fehler = fund.vorschlag.fehler[static_cast<std::size_t>(p - 1)];
                  tabelle.zelle(benutzt(messart, p) ? zahl(fehler, 2) : QByteArray());
              }
              const Indizes i = indizes(m);
              for (const auto& index : {i.CI, i.HI, i.DV}) {
                  tabelle.zelle(zahl(index));
              }
              tabelle.zeilenende();
          });
    return tabelle.csv();
}

QByteArray alsJson(const std::vector<Bildmessergebnis>& ergebnisse, Messart messart) {
    QJsonArray alle;
    jeder(
        ergebnisse, messart,
        [&](const Bildmessergebnis& ergebnis, const Flügelfund& fund, int nummer,
            const Flügelmessung& m) {
            QJsonArray punkte;
            for (int p = ersterPunkt(messart); p <= letzterPunkt(messart); ++p) {
                punkte.append(QJsonObject{
                    {u"point"_s, p},
                    {u"x"_s, json(m.punkte.PunktX[p])},
                    {u"y"_s, json(m.punkte.PunktY[p])},
                    {u"error"_s, json(fund.vorschlag.fehler[static_cast<std::size_t>(p - 1)], 2)}});
            }
            const Indizes i = indizes(m);
            alle.append(QJsonObject{{u"file"_s, ergebnis.bild},
                                    {u"wing"_s, nummer},
                                    {u"x"_s, json(fund.mitte.x(), 2)},
                                    {u"y"_s, json(fund.mitte.y(), 2)},
                                    {u"angle"_s, json(fund.winkel, 2)},
                                    {u"mirrored"_s, fund.gespiegelt},
                                    {u"size"_s, json(fund.größe, 4)},
                                    {u"score"_s, json(fund.güte, 4)},
                                    {u"state"_s, standwort(fund)},
                                    {u"points"_s, punkte},
                                    {u"ci"_s, json(i.CI)},
                                    {u"hi"_s, json(i.HI)},
                                    {u"dv"_s, json(i.DV)}});
        });
    return QJsonDocument(alle).toJson();
}

QByteArray tps(const std::vector<Bildmessergebnis>& ergebnisse, Messart messart) {
    // TPS knows pictures without their folders.
    const bool mehrere = ergebnisse.size() > 1;
    std::vector<Ausgabeflügel> flügel;
    jeder(ergebnisse, messart,
          [&](const Bildmessergebnis& ergebnis, const Flügelfund&, int nummer,
              const Flügelmessung& m) {
              flügel.push_back(
                  {.nummer = nummer,
                   .name = mehrere ? ergebnis.bild + u':' + QString::number(nummer) : QString(),
                   .messung = m,
                   .bildhöhe = static_cast<float>(ergebnis.größe.height())});
          });
    return alsTps(flügel).inhalt;
}

} // namespace

Flügelmessung messung(const Flügelfund& fund, const Bildmessergebnis& ergebnis, Messart messart) {
    Flügelmessung m{.punkte = Messpunkte(messart),
                    .messart = messart,
                    .aufnahme = {.Zoomfaktor = 1, .dpi = ergebnis.dpi.value_or(0)},
                    .bilddatei = ergebnis.bild,
                    .bild = {.größe = ergebnis.größe, .marke = {}},
                    .ungeprüft = true};
    for (int p = ersterPunkt(messart); p <= letzterPunkt(messart); ++p) {
        const QPointF ort = fund.vorschlag.punkte[static_cast<std::size_t>(p - 1)];
        m.punkte.setze(messart, p, static_cast<float>(ort.x()), static_cast<float>(ort.y()),
                       Punktherkunft::Vorgeschlagen);
    }
    m.punkte.AktuellerPunkt = letzterPunkt(messart);
    m.punkte.GewählterPunkt = 0;
    return m;
}

QByteArray messausgabe(const std::vector<Bildmessergebnis>& ergebnisse,
                       const Bildmessbefehl& befehl) {
    switch (befehl.format) {
    case Messformat::Tps:
        return tps(ergebnisse, befehl.messart);
    case Messformat::Json:
        return alsJson(ergebnisse, befehl.messart);
    case Messformat::Csv:
        break;
    }
    return alsCsv(ergebnisse, befehl.messart);
}

} // namespace tarvel
