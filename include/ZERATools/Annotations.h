// SPDX-License-Identifier: MIT
// ZERATools/Annotations.h: the platform's argument annotations, empty where the compiler has none.
#ifndef ZERATOOLS_ANNOTATIONS_H
#define ZERATOOLS_ANNOTATIONS_H

#if defined(__has_include)
  #if __has_include(<sal.h>)
    #include <sal.h>
  #endif
#endif

#ifndef _In_
  #define _In_
#endif
#ifndef _In_opt_
  #define _In_opt_
#endif
#ifndef _In_z_
  #define _In_z_
#endif
#ifndef _In_opt_z_
  #define _In_opt_z_
#endif
#ifndef _Out_
  #define _Out_
#endif
#ifndef _Out_opt_
  #define _Out_opt_
#endif
#ifndef _Inout_
  #define _Inout_
#endif
#ifndef _Out_writes_z_
  #define _Out_writes_z_(size)
#endif
#ifndef _Out_writes_opt_z_
  #define _Out_writes_opt_z_(size)
#endif
#ifndef _Out_writes_bytes_
  #define _Out_writes_bytes_(size)
#endif
#ifndef _In_reads_bytes_
  #define _In_reads_bytes_(size)
#endif
#ifndef _In_reads_bytes_opt_
  #define _In_reads_bytes_opt_(size)
#endif
#ifndef _Inout_updates_z_
  #define _Inout_updates_z_(size)
#endif
#ifndef _Out_writes_bytes_to_
  #define _Out_writes_bytes_to_(size, count)
#endif
#ifndef _Out_writes_bytes_to_opt_
  #define _Out_writes_bytes_to_opt_(size, count)
#endif

#endif  // ZERATOOLS_ANNOTATIONS_H
