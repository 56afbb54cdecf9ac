#include "core/dispatch.h"
#include "core/program.h"
#include "core/start.h"
#include "desktop/desktop.h"

int main(int /*argument_count*/, char **arguments) {
  borvane::Desktop desktop(arguments[0]);
  borvane::Program program(desktop.Services(), desktop.Forms());
  borvane::Dispatch(borvane::Main);
  desktop.Run();
}
