#include "measure/verteiler.h"

namespace tarvel {

void Verteiler::meldeAn(QStringView wort, Handlung handlung) {
    handlungen_.insert_or_assign(wort.toString(), std::move(handlung));
}

bool Verteiler::kennt(QStringView wort) const {
    return handlungen_.contains(wort.toString());
}

bool Verteiler::führeAus(QStringView wort) {
    const auto stelle = handlungen_.find(wort.toString());
    if (stelle == handlungen_.end()) {
        return false;
    }
    stelle->second();
    for (const Zuhörer& zuhörer : zuhörer_) {
        zuhörer(wort);
    }
    return true;
}

} // namespace tarvel
