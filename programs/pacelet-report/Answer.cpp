#include "programs/pacelet-report/Answer.h"

#include "Core/Diagnosis/Diagnosis.h"

namespace pacelet::report {

DiagnosisResult diagnose(const Look& look, const ProcessCatalog& catalog) {
    DiagnosisInput input;
    input.signals = look.reading.signals;
    input.groups = look.reading.groups;
    input.spotlightBusySince = look.spotlightBusySince;
    input.lowPowerMode = look.lowPowerMode;
    input.now = look.now;
    return Diagnosis::run(input, catalog);
}

} // namespace pacelet::report
