// Questions about what lies above a path.
#pragma once

namespace qbobj
{

// No path of a file system has more bytes.
inline constexpr unsigned longest_path = 4096;

// SQL up to its SELECT, whose columns follow: the rows of `above` are the path that is given (n is 0) and the folders above
// it, nearest first.
inline constexpr char folders_above[] = R"(WITH RECURSIVE above(path,n) AS (SELECT %Q,0 UNION ALL
    SELECT substr(rtrim(path,replace(path,'/','')),1,length(rtrim(path,replace(path,'/','')))-1),n+1
    FROM above WHERE instr(path,'/')>0 AND length(path)<=4096) SELECT )";

} // namespace qbobj
