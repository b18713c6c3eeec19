/// Exports something, but not what a host looks for.
extern "C" int SomethingElse() {
    return 1;
}
