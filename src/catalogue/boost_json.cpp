// Boost.JSON is used as headers only: its one compiled copy is this file.
#include <boost/json/src.hpp>
