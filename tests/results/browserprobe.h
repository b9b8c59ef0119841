#pragma once

#include "results/ergebnisdateien.h"

namespace tarvel {

/// A results file with rows for the browser.
struct Browserprobe : Dateitest {
    static Ergebnissatz vollerSatz(const QString& nummer) {
        Ergebnissatz neu = satz(nummer);
        neu.ZB_NR = QStringLiteral("12-34-56-2024");
        neu.Z_NAME = QStringLiteral("Anna Weiß");
        neu.A_D = QStringLiteral("Arbeiter");
        neu.RASSE = QStringLiteral("Carnica");
        neu.B_NAME = QStringLiteral("Jörg Bauer");
        neu.ERGEBNIS = QStringLiteral("Ja");
        neu.VATER = QStringLiteral("Insel");
        neu.VOLK = QStringLiteral("Volk 7");
        return neu;
    }
    void speichere(const Ergebnissatz& neu) const { tabelle().speichere(neu); }

    /// Adds rows "0001" to @p anzahl, one a day from the first of January 2020.
    void fülle(int anzahl) const {
        fremd(QStringLiteral(
                  "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<%1) "
                  "INSERT INTO Ergebnisse(U_NR,ZB_NR,Z_NAME,A_D,RASSE,B_NAME,ERGEBNIS,DATUM,VATER,"
                  "VOLK) SELECT printf('%04d',i),'1','Züchter '||printf('%04d',i),'Drohnen',"
                  "'Carnica','B','Ja',date('2020-01-01','+'||(i-1)||' days'),' ',' ' FROM n "
                  "WHERE %1>0")
                  .arg(anzahl));
    }
};

} // namespace tarvel
