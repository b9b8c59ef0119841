#pragma once

#include <QDateTime>

namespace tarvel {

/// Source of the current time. Comes in from outside so that nothing depends on the day it runs on.
class Clock {
public:
    virtual ~Clock() = default;
    /// Local date and time now.
    [[nodiscard]] virtual QDateTime now() const = 0;
};

/// The computer's own clock.
class SystemClock final : public Clock {
public:
    [[nodiscard]] QDateTime now() const override { return QDateTime::currentDateTime(); }
};

} // namespace tarvel
