#include "detect/erkennungsmodell.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QFile>
#include <QFloat16>

#include <algorithm>
#include <cmath>

namespace tarvel {
namespace {

constexpr char Kennung[] = "Tarvel wing model\n";
constexpr int Summenlänge = 32;
constexpr int HöchstensStufen = 16;
constexpr int GrößtesFenster = 96;
constexpr int GrößtesMuster = 400;

void schreibe(QDataStream& s, const std::vector<float>& zahlen) {
    s << quint32(zahlen.size());
    for (float z : zahlen)
        s << qfloat16(z);
}

bool lies(QDataStream& s, std::vector<float>& zahlen, std::size_t erwartet) {
    quint32 anzahl = 0;
    s >> anzahl;
    if (anzahl != erwartet)
        return false;
    zahlen.resize(anzahl);
    for (float& z : zahlen) {
        qfloat16 halb;
        s >> halb;
        z = float(halb);
        if (!std::isfinite(z))
            return false;
    }
    return s.status() == QDataStream::Ok;
}

bool liesZahl(QDataStream& s, float& zahl) {
    s >> zahl;
    return std::isfinite(zahl);
}

bool istFenster(int fenster, int zelle) {
    return zelle >= 1 && fenster >= zelle && fenster <= GrößtesFenster && fenster % zelle == 0;
}

bool liesOrte(QDataStream& s, auto& orte) {
    constexpr double Weiteste = 4000;
    for (QPointF& ort : orte) {
        s >> ort;
        if (!(std::abs(ort.x()) < Weiteste) || !(std::abs(ort.y()) < Weiteste))
            return false;
    }
    return true;
}

bool lies(QDataStream& s, Merkmalsraum& raum) {
    qint32 fenster = 0;
    qint32 zelle = 0;
    s >> fenster >> zelle;
    if (!istFenster(fenster, zelle))
        return false;
    raum.fenster = fenster;
    raum.zelle = zelle;
    const auto zahl = 8 * std::size_t(raum.merkmale());
    return lies(s, raum.mitte, zahl) && lies(s, raum.richtungen, zahl * Merkmalsraum::Richtungen);
}

bool lies(QDataStream& s, Fehlermodell& fehler) {
    for (Merkmalsraum& raum : fehler.räume)
        if (!lies(s, raum))
            return false;
    for (float& z : fehler.mitte)
        if (!liesZahl(s, z))
            return false;
    for (float& z : fehler.streuung)
        if (!liesZahl(s, z) || z <= 0)
            return false;
    for (float& z : fehler.gewichte)
        if (!liesZahl(s, z))
            return false;
    quint32 anzahl = 0;
    s >> anzahl;
    if (anzahl < 2 || anzahl > 100)
        return false;
    fehler.eichung.resize(anzahl);
    float zuvor = -std::numeric_limits<float>::infinity();
    for (auto& [summe, wert] : fehler.eichung) {
        if (!liesZahl(s, summe) || !liesZahl(s, wert) || summe <= zuvor || wert <= 0)
            return false;
        zuvor = summe;
    }
    return true;
}

bool lies(QDataStream& s, Erkennungsmodell& modell) {
    qint32 breite = 0;
    qint32 höhe = 0;
    QByteArray dunkel;
    s >> modell.herkunft >> breite >> höhe >> dunkel;
    if (breite < 16 || höhe < 16 || breite > GrößtesMuster || höhe > GrößtesMuster ||
        dunkel.size() != qsizetype(breite) * höhe)
        return false;
    modell.muster = Graubild(breite, höhe);
    std::copy(dunkel.begin(), dunkel.end(), modell.muster.werte.begin());
    if (!liesOrte(s, modell.punkte))
        return false;
    quint32 ecken = 0;
    s >> ecken;
    if (ecken < 3 || ecken > 100)
        return false;
    modell.umriss.resize(ecken);
    if (!liesOrte(s, modell.umriss))
        return false;
    quint32 stufen = 0;
    s >> stufen;
    if (stufen < 1 || stufen > HöchstensStufen)
        return false;
    for (quint32 i = 0; i < stufen; ++i) {
        qint32 fenster = 0;
        qint32 zelle = 0;
        bool gemeinsam = false;
        s >> fenster >> zelle >> gemeinsam;
        if (!istFenster(fenster, zelle))
            return false;
        Kaskadenstufe stufe{fenster, zelle, gemeinsam, {}};
        if (!lies(s, stufe.gewichte, stufe.gewichtszahl()))
            return false;
        modell.stufen.push_back(std::move(stufe));
    }
    return lies(s, modell.fehler) && s.status() == QDataStream::Ok && s.atEnd();
}

} // namespace

std::size_t Kaskadenstufe::gewichtszahl() const {
    const auto f = std::size_t(merkmale());
    return gemeinsam ? (8 * f + 1) * 16 : 8 * (f + 1) * 2;
}

QByteArray Erkennungsmodell::alsDatei() const {
    QByteArray inhalt;
    QDataStream s(&inhalt, QIODevice::WriteOnly);
    s.setVersion(QDataStream::Qt_6_4);
    s.setFloatingPointPrecision(QDataStream::SinglePrecision);
    s << herkunft << qint32(muster.breite) << qint32(muster.höhe)
      << QByteArray(reinterpret_cast<const char*>(muster.werte.data()),
                    qsizetype(muster.werte.size()));
    for (const QPointF& ort : punkte)
        s << ort;
    s << quint32(umriss.size());
    for (const QPointF& ort : umriss)
        s << ort;
    s << quint32(stufen.size());
    for (const Kaskadenstufe& stufe : stufen) {
        s << qint32(stufe.fenster) << qint32(stufe.zelle) << stufe.gemeinsam;
        schreibe(s, stufe.gewichte);
    }
    for (const Merkmalsraum& raum : fehler.räume) {
        s << qint32(raum.fenster) << qint32(raum.zelle);
        schreibe(s, raum.mitte);
        schreibe(s, raum.richtungen);
    }
    for (float z : fehler.mitte)
        s << z;
    for (float z : fehler.streuung)
        s << z;
    for (float z : fehler.gewichte)
        s << z;
    s << quint32(fehler.eichung.size());
    for (const auto& [summe, wert] : fehler.eichung)
        s << summe << wert;

    QByteArray datei;
    QDataStream kopf(&datei, QIODevice::WriteOnly);
    kopf.setVersion(QDataStream::Qt_6_4);
    kopf.writeRawData(Kennung, sizeof Kennung - 1);
    kopf << Fassung;
    const QByteArray summe = QCryptographicHash::hash(inhalt, QCryptographicHash::Sha256);
    kopf.writeRawData(summe.constData(), Summenlänge);
    return datei + inhalt;
}

Modellergebnis eingebautesModell() {
    QFile datei(QStringLiteral(":/tarvel/fluegelmodell.bin"));
    if (!datei.open(QIODevice::ReadOnly))
        return Modellfehler::KeinModell;
    return liesErkennungsmodell(datei.readAll());
}

Modellergebnis liesErkennungsmodell(const QByteArray& datei) {
    constexpr qsizetype Kopf = sizeof Kennung - 1;
    if (!datei.startsWith(Kennung))
        return Modellfehler::KeinModell;
    if (datei.size() < Kopf + 4 + Summenlänge)
        return Modellfehler::Beschädigt;
    QDataStream kopf(datei.mid(Kopf, 4));
    quint32 fassung = 0;
    kopf >> fassung;
    if (fassung != Erkennungsmodell::Fassung)
        return Modellfehler::AndereFassung;
    const QByteArray inhalt = datei.mid(Kopf + 4 + Summenlänge);
    if (QCryptographicHash::hash(inhalt, QCryptographicHash::Sha256) !=
        datei.mid(Kopf + 4, Summenlänge))
        return Modellfehler::Beschädigt;
    QDataStream s(inhalt);
    s.setVersion(QDataStream::Qt_6_4);
    s.setFloatingPointPrecision(QDataStream::SinglePrecision);
    auto modell = std::make_shared<Erkennungsmodell>();
    if (!lies(s, *modell))
        return Modellfehler::Beschädigt;
    return modell;
}

} // namespace tarvel
