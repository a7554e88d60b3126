// Keeps a room that has no sources yet a library that can be linked.
namespace sorvan {
extern const int emptyRoom;
const int emptyRoom = 0;
}  // namespace sorvan
