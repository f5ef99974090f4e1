// Questions about what lies above a path.
#pragma once

namespace qbobj
{

// SQL up to its SELECT, whose columns follow: the rows of `above` are the path that is given (n is 0) and the folders above
// it, nearest first. No path of a file system is longer than 4096 bytes.
inline constexpr char folders_above[] = R"(WITH RECURSIVE above(path,n) AS (SELECT %Q,0 UNION ALL
    SELECT substr(rtrim(path,replace(path,'/','')),1,length(rtrim(path,replace(path,'/','')))-1),n+1
    FROM above WHERE instr(path,'/')>0 AND length(path)<=4096) SELECT )";

} // namespace qbobj
