#include "dialogs/PreviewSchedule.h"

namespace Global {
void PreviewSchedule(const Variant& /*reportID*/) {}
}  // namespace Global
