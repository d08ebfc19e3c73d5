// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/contracts/report_engine.h"

namespace report {
namespace {

using Factory = std::shared_ptr<Engine> (*)();

Factory& TheFactory() {
    static Factory factory = nullptr;
    return factory;
}

Factory& TheRunFactory() {
    static Factory factory = nullptr;
    return factory;
}

}  // namespace

std::shared_ptr<Engine> CreateEngine() {
    if (TheFactory() == nullptr) {
        throw RuntimeError(err::ObjectNotSet,
                           RuntimeError(err::ObjectNotSet).Description() + ": the report engine");
    }
    return TheFactory()();
}

void SetEngineFactory(Factory factory) {
    TheFactory() = factory;
}

std::shared_ptr<Engine> CreateRunEngine() {
    return TheRunFactory() != nullptr ? TheRunFactory()() : CreateEngine();
}

void SetRunEngineFactory(Factory factory) {
    TheRunFactory() = factory;
}

}  // namespace report
