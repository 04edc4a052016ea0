#include "app/survey.h"

void SiteTable::resize(SiteIndex capacity) {
    for (auto& column : columns_)
        column.resize(index(capacity));
}

void Survey::chooseDistance(int mode) {
    DistanceMode = mode;
    UseTrueDist = mode == 1;
    UseXDist = mode == 2;
    UseYDist = mode == 3;
}

Survey& theSurvey() {
    static Survey survey;
    return survey;
}

Session& theSession() {
    static Session session;
    return session;
}
