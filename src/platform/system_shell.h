#pragma once

#include "platform/shell.h"

namespace tarvel {

/// The computer's own programs.
class SystemShell final : public Shell {
public:
    bool openDocument(const QString& path) override;
    bool runProgram(const QString& program, const QString& document) override;
};

} // namespace tarvel
