/// A module that is not of the program's version.
extern "C" {
[[gnu::visibility("default")]] extern const char lumowattVersion[];
const char lumowattVersion[] = "0.9.0";
}
