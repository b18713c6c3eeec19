/// Something to export, but not what a host asks for.
extern "C" int SomethingElse() {
    return 1;
}
