#include "console/picture.h"

#include "document/names.h"
#include "draw/zelPicture.h"
#include "session/shown.h"

#include <strings.h>

namespace shading {

bool drawPicture(ZEL::Compound& compound,
                 const PictureChoice& choice,
                 std::string& svg,
                 std::string& problem)
{
    zelDraw::PictureOptions options;
    options.depth = choice.depth;
    if (!choice.isAll)
        options.isShown = isTelling;
    options.hiddenSource = hiddenSourceOf;
    options.isUnknown = isUnknown;
    return zelDraw::drawCompound(compound, options, svg, problem);
}

std::string pictureNameProblem(const std::string& file)
{
    const std::string ending = ".svg";
    const bool isPicture =
        file.size() >= ending.size() &&
        strcasecmp(file.c_str() + file.size() - ending.size(), ending.c_str()) == 0;
    return isPicture ? "" : "the name of a picture ends in .svg";
}

} // namespace shading
