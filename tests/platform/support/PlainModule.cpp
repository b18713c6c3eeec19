/// A function to find by its address.
extern "C" int Something() {
    return 1;
}
