#include "tools/cli/terminal.h"

int main(int argc, char** argv) { return cli::Main({argv + 1, argv + argc}); }
