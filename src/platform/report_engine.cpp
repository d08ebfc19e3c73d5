#include "platform/report_engine.h"

namespace report {

namespace {

std::shared_ptr<Engine> (*g_factory)() = nullptr;

}  // namespace

std::shared_ptr<Engine> CreateEngine() {
    if (g_factory == nullptr) {
        throw RuntimeError(err::ObjectNotSet);
    }
    return g_factory();
}

void SetEngineFactory(std::shared_ptr<Engine> (*factory)()) { g_factory = factory; }

}  // namespace report
