// A shared object laid out as a bundle that exports no OFX entry points.
extern "C" __attribute__((visibility("default"))) int hueloom_not_an_ofx_plugin(void) { return 42; }
