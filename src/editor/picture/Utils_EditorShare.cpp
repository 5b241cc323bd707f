#include "utils/Utils.h"

QString Utils::pathForEditedImgToShare(const QString &fileName)
{
    return tempFileOperationsFolder() + QLatin1Char('/') + fileName;
}
