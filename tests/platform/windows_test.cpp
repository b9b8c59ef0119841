// What only Windows has, beside the system's own functions.

#include "platform/benutzerspeicher.h"
#include "platform/dateiausgabe.h"
#include "platform/dateistand.h"
#include "platform/profil.h"
#include "support/testordner.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

#include <random>

#include <windows.h>

namespace tarvel {
namespace {

using namespace Qt::StringLiterals;

std::wstring breit(const QString& text) {
    return QDir::toNativeSeparators(text).toStdWString();
}

TEST(Windows, settingsOfThePerson_lieInTheRegistryUnderTheirNames) {
    const wchar_t* const ort = L"Software\\VB and VBA Program Settings\\TarvelProbe\\0ptionen";
    Benutzerspeicher speicher;
    const QString pfad = u"C:\\Völker\\Königin Æ 1.tdb"_s;
    EXPECT_TRUE(speicher.SaveSetting(u"TarvelProbe"_s, u"0ptionen"_s, u"Tabelle"_s, pfad));
    std::array<wchar_t, 200> wert{};
    DWORD bytes = sizeof(wert);
    EXPECT_EQ(RegGetValueW(HKEY_CURRENT_USER, ort, L"Tabelle", RRF_RT_REG_SZ, nullptr, wert.data(),
                           &bytes),
              ERROR_SUCCESS);
    EXPECT_EQ(QString::fromWCharArray(wert.data()), pfad);
    EXPECT_EQ(speicher.GetSetting(u"TarvelProbe"_s, u"0ptionen"_s, u"Tabelle"_s), pfad);
    EXPECT_EQ(speicher.GetSetting(u"TarvelProbe"_s, u"0ptionen"_s, u"Nichts"_s, u"x"_s), u"x"_s);
    RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\VB and VBA Program Settings\\TarvelProbe");
}

QByteArray bytes(const QString& pfad) {
    QFile datei(pfad);
    return datei.open(QIODevice::ReadOnly) ? datei.readAll() : QByteArray("(no file)");
}

bool istWine() {
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

/// A file of settings such as somebody's editor may leave it, and the names that are asked for.
/// Wine differs from Windows in these, which are left out there: it takes off no blanks inside
/// brackets, knows a commented line as a key, reads "0x10" as a number and an empty value as none,
/// and a list of names, or a value in quotes, that just fits as one that does not.
class Zufallsprofil {
public:
    explicit Zufallsprofil(unsigned saat)
        : würfel_(saat) {}

    QByteArray datei() {
        QByteArray inhalt;
        for (int i = zahl(12); i > 0; --i) {
            inhalt += zeile() + eines({"\r\n", "\r\n", "\r\n", "\n"});
        }
        return zahl(4) == 0 ? inhalt + zeile() : inhalt;
    }
    QByteArray sektion() { return eines({"a", "B", "ab c", "\xC4", "fehlt"}); }
    QByteArray schlüssel() { return eines({"k", "K", "x y", "\xFC", "Zoom", "fehlt"}); }
    QByteArray wert() {
        return eines({"1", "-12", "0", "wahr", "\" v \"", "'v'", "a=b", "", "99999999999", "5 mm",
                      "Stra\xDF"
                      "e",
                      ";k", istWine() ? "3x" : "0x10", "+3", "\"", "v  w"});
    }
    int zahl(int höchstens) { return std::uniform_int_distribution(0, höchstens)(würfel_); }

private:
    QByteArray eines(const std::vector<const char*>& wahl) {
        return wahl.at(static_cast<std::size_t>(zahl(static_cast<int>(wahl.size()) - 1)));
    }
    QByteArray blank() { return eines({"", "", "", " ", "\t", "  "}); }
    QByteArray zeile() {
        const QByteArray innen = istWine() ? QByteArray() : blank();
        switch (zahl(9)) {
        case 0:
        case 1:
        case 2:
            return blank() + '[' + innen + sektion() + innen + ']' + blank();
        case 3:
            return istWine() ? QByteArray() : blank() + ';' + schlüssel() + '=' + wert();
        case 4:
            return {};
        default:
            return blank() + schlüssel() + blank() + '=' + blank() + wert() + blank();
        }
    }

    std::mt19937 würfel_;
};

class Profilvergleich : public testing::Test {
protected:
    Testordner ordner_;

    // The system keeps what it has read of a name, so that each file gets one of its own.
    QString neueDatei(const QByteArray& inhalt) {
        return ordner_.schreibe(u"%1.ini"_s.arg(++nummer_), inhalt);
    }
    static QByteArray system(const char* sektion, const char* schlüssel, int größe,
                             const QByteArray& pfad) {
        QByteArray puffer(größe, 'x');
        const DWORD länge = ::GetPrivateProfileStringA(sektion, schlüssel, Vorgabe, puffer.data(),
                                                       static_cast<DWORD>(größe), pfad.constData());
        return puffer.left(static_cast<qsizetype>(länge));
    }

    /// What every section and key of a file read as: Wine writes a file anew, without blanks and
    /// empty lines and with one kind of line end, where Windows edits it.
    static QByteArray sinn(const QString& pfad) {
        QByteArray alles;
        for (const QByteArray& sektion : Profil(pfad).sektionen()) {
            alles += '[' + sektion + ']';
            for (const QByteArray& schlüssel : Profil(pfad).schlüssel(sektion)) {
                alles +=
                    schlüssel + '=' + Profil(pfad).wert(sektion, schlüssel).value_or("-") + ';';
            }
        }
        return alles;
    }

    static constexpr char Vorgabe[] = "vor";
    int nummer_ = 0;
};

TEST_F(Profilvergleich, randomFilesAndCalls_areWhatTheSystemMakesOfThem) {
    if (GetACP() != 1252) {
        GTEST_SKIP() << "this system's code page is " << GetACP();
    }
    const int anzahl = qEnvironmentVariableIsSet("TARVEL_LONG") ? 10'000 : 60;
    int verschieden = 0;
    for (int i = 0; i < anzahl && verschieden < 20; ++i) {
        Zufallsprofil zufall(static_cast<unsigned>(i));
        const QByteArray inhalt = zufall.datei();
        const QString pfad = neueDatei(inhalt);
        const QByteArray name = QFile::encodeName(QDir::toNativeSeparators(pfad));
        const QByteArray sektion = zufall.sektion();
        const QByteArray schlüssel = zufall.schlüssel();
        const int größe = zufall.zahl(3) == 0 ? 2 + zufall.zahl(8) : 200;
        const int listengröße = istWine() ? 200 : größe;
        const auto vergleiche = [&](const char* was, const QByteArray& unser,
                                    const QByteArray& des) {
            if (unser != des) {
                ++verschieden;
                ADD_FAILURE() << was << " [" << sektion.constData() << "] " << schlüssel.constData()
                              << " (" << größe << ")\nours   "
                              << unser.toPercentEncoding().constData() << "\nsystem "
                              << des.toPercentEncoding().constData() << "\nfile   "
                              << inhalt.toPercentEncoding(" []=;\"'").constData();
            }
        };
        const QByteArray ganz = GetPrivateProfileStringA(sektion, schlüssel, Vorgabe, 200, pfad);
        if (!istWine() || ganz == ganz.trimmed() || ganz.size() != größe - 1) {
            vergleiche("string", GetPrivateProfileStringA(sektion, schlüssel, Vorgabe, größe, pfad),
                       system(sektion, schlüssel, größe, name));
        }
        vergleiche("keys", GetPrivateProfileStringA(sektion, {}, Vorgabe, listengröße, pfad),
                   system(sektion, nullptr, listengröße, name));
        vergleiche("sections", GetPrivateProfileStringA({}, {}, Vorgabe, listengröße, pfad),
                   system(nullptr, nullptr, listengröße, name));
        if (!istWine() || !ganz.isEmpty()) {
            vergleiche("int",
                       QByteArray::number(GetPrivateProfileIntA(sektion, schlüssel, 7, pfad)),
                       QByteArray::number(
                           static_cast<int>(::GetPrivateProfileIntA(sektion, schlüssel, 7, name))));
        }

        const int art = zufall.zahl(9);
        const QByteArray wert = zufall.wert();
        const QString seine = neueDatei(inhalt);
        WritePrivateProfileStringA(
            sektion, art == 0 ? std::nullopt : std::optional<QByteArrayView>(schlüssel),
            art <= 1 ? std::nullopt : std::optional<QByteArrayView>(wert), pfad);
        const QByteArray seinName = QFile::encodeName(QDir::toNativeSeparators(seine));
        ::WritePrivateProfileStringA(sektion, art == 0 ? nullptr : schlüssel.constData(),
                                     art <= 1 ? nullptr : wert.constData(), seinName);
        ::WritePrivateProfileStringA(nullptr, nullptr, nullptr, seinName); // out of its memory
        vergleiche(art == 0   ? "without the section"
                   : art == 1 ? "without the key"
                              : "written",
                   istWine() ? sinn(pfad) : bytes(pfad), istWine() ? sinn(seine) : bytes(seine));
        QFile::remove(pfad);
        QFile::remove(seine);
    }
}

class Dateiprobe : public testing::Test {
protected:
    Testordner ordner_;
    QString pfad_ = ordner_.filePath(u"Bienen völker 'neu'.tdb"_s);
};

TEST_F(Dateiprobe, fileThatSomebodyHolds_staysAndIsTold) {
    EXPECT_EQ(schreibeDatei(pfad_, "alt"), std::nullopt);
    EXPECT_EQ(schreibeDatei(pfad_, "neu"), std::nullopt);
    EXPECT_EQ(bytes(pfad_), "neu");
    HANDLE halter = CreateFileW(breit(pfad_).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(halter, INVALID_HANDLE_VALUE);
    EXPECT_NE(schreibeDatei(pfad_, "dritte"), std::nullopt);
    CloseHandle(halter);
    EXPECT_EQ(bytes(pfad_), "neu");
    EXPECT_EQ(QDir(ordner_.path()).entryList(QDir::Files).size(), 1); // no draft stays behind
    SetFileAttributesW(breit(pfad_).c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_NE(schreibeDatei(pfad_, "vierte"), std::nullopt);
    SetFileAttributesW(breit(pfad_).c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(bytes(pfad_), "neu");
}

TEST_F(Dateiprobe, longPath_isWritten) {
    QString lang = ordner_.path();
    while (lang.size() < 300) {
        lang += u"/Königinnen der Belegstelle"_s;
    }
    ASSERT_TRUE(QDir().mkpath(lang));
    EXPECT_EQ(schreibeDatei(lang + u"/a.csv"_s, "x"), std::nullopt);
    EXPECT_EQ(bytes(lang + u"/a.csv"_s), "x");
    EXPECT_TRUE(dateistand(lang + u"/a.csv"_s));
}

TEST_F(Dateiprobe, state_tellsAnotherFileOfTheSameSizeAndTime) {
    EXPECT_EQ(schreibeDatei(pfad_, "eins"), std::nullopt);
    const auto vorher = dateistand(pfad_);
    EXPECT_EQ(dateistand(pfad_), vorher);
    const auto zeit = QFileInfo(pfad_).lastModified();
    EXPECT_EQ(schreibeDatei(pfad_, "zwei"), std::nullopt);
    QFile datei(pfad_);
    ASSERT_TRUE(datei.open(QIODevice::ReadWrite));
    datei.setFileTime(zeit, QFileDevice::FileModificationTime);
    datei.close();
    ASSERT_TRUE(vorher && dateistand(pfad_));
    EXPECT_NE(dateistand(pfad_), vorher);
    EXPECT_EQ(dateistand(ordner_.filePath(u"keine"_s)), std::nullopt);
}

} // namespace
} // namespace tarvel
