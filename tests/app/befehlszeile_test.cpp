#include "app/befehlszeile.h"

#include <QDir>
#include <gmock/gmock.h>

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

/// A path from where the drives begin.
QString pfad(const QString& ab) {
    return QDir::rootPath() + ab;
}

std::variant<Befehlszeile, Befehlszeilenfehler> lese(QStringList argumente) {
    argumente.prepend(u"tarvel"_s);
    return leseBefehlszeile(argumente, pfad(u"home/imker"_s));
}

} // namespace

TEST(Befehlszeile, goodLines_giveWhatTheySay) {
    Befehlszeile erwartet;
    EXPECT_EQ(std::get<Befehlszeile>(lese({})), erwartet);
    erwartet.dateien = {pfad(u"home/imker/ein bild.png"_s), pfad(u"tmp/ä.jpg"_s)};
    EXPECT_EQ(std::get<Befehlszeile>(lese({u"ein bild.png"_s, pfad(u"tmp/ä.jpg"_s)})), erwartet);
    erwartet = {};
    erwartet.ordner = pfad(u"home/daten"_s);
    erwartet.nurStart = true;
    EXPECT_EQ(std::get<Befehlszeile>(lese({u"--dir=../daten"_s, u"--exit-after-startup"_s})),
              erwartet);
    erwartet = {};
    erwartet.demo = pfad(u"home/imker/demo"_s);
    EXPECT_EQ(std::get<Befehlszeile>(lese({u"--demo"_s, u"demo"_s})), erwartet);
    erwartet = {};
    erwartet.dateien = {pfad(u"home/imker/-seltsam.png"_s)};
    EXPECT_EQ(std::get<Befehlszeile>(lese({u"--"_s, u"-seltsam.png"_s})), erwartet);
}

TEST(Befehlszeile, badLines_giveTheReason) {
    for (const QStringList& argumente : {QStringList{u"--dir"_s},
                                         {u"--dir="_s},
                                         {u"--demo="_s},
                                         {u"--gibtsnicht"_s},
                                         {u"--exit-after-startup=1"_s}}) {
        const auto ergebnis = lese(argumente);
        ASSERT_TRUE(std::holds_alternative<Befehlszeilenfehler>(ergebnis))
            << qPrintable(argumente.join(u' '));
        EXPECT_FALSE(std::get<Befehlszeilenfehler>(ergebnis).text.isEmpty());
    }
    EXPECT_TRUE(befehlszeilenhilfe().startsWith(u"Usage: tarvel [options] [FILE...]\n"_s));
    EXPECT_TRUE(befehlszeilenhilfe().contains(u"--demo"_s));
}
