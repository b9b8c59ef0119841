#pragma once

#include <QLabel>
#include <QTimer>

namespace tarvel {

/// The hint line `lab_H` of the main window. Each new hint blinks four times and then stays.
class Hinweiszeile : public QLabel {
public:
    explicit Hinweiszeile(QWidget* parent = nullptr);

    void zeige(const QString& hinweis);
    /// Replaces the words of the hint shown, without blinking, after a change of language.
    void übersetze(const QString& hinweis);

    /// One tick of the blinking.
    void Timer1_Timer();

private:
    QTimer Timer1_;
    int blinkzähler_ = 0;
};

} // namespace tarvel
