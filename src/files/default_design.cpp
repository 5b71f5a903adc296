#include "design/cycle.h"
#include "files/design_file.h"
#include "screen/quellmark_form.h"

namespace qm {

bool isDefaultDesignFile(const QuellmarkForm& f, const std::string& sfile)
{
    const PlatformServices& p = f.platform;
    return !sfile.empty() && (sfile == p.defaultDesignPath || sfile == p.siteDefaultDesignPath);
}

void OpenDefault(QuellmarkForm& f)
{
    const PlatformServices& p = f.platform;
    std::string path = p.defaultDesignPath;
    const bool userFileThere = p.files && !path.empty() && p.files->fileExists(path);
    if (!userFileThere && !p.siteDefaultDesignPath.empty() && p.files &&
        p.files->fileExists(p.siteDefaultDesignPath))
        path = p.siteDefaultDesignPath;
    if (path.empty())
        LoadNoDefaultFile(f);
    else
        OpenFile(f, path);
}

} // namespace qm
