#include "core/program.h"

namespace borvane {

Program::Program(const Platform &services, FormHost &host) : FormSet(host), platform(services) { current = this; }

Program::~Program() { current = nullptr; }

Module1Variables *Module1Handle::operator->() const { return &program().variables; }

}  // namespace borvane
