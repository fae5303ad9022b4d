// varnel-foreign-host: a plain GTK 3 program, with no wxApp of its own, that uses the library
// inside its own window and its own loop. Click the button for a message dialog; close the
// window to quit.
#include "foreignhost.h"

int main(int argc, char** argv) {
    gtk_init(&argc, &argv);
    Varnel::ForeignHost::Host host;
    host.run();
    return 0;
}
