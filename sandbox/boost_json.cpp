// Boost.JSON is used as headers only: its one compiled copy in this program is this file.
#include <boost/json/src.hpp>
