/// Module whose version differs from the program's.
extern "C" {
[[gnu::visibility("default")]] extern const char lumowattVersion[];
const char lumowattVersion[] = "0.9.0";
}
