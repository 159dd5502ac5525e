/*
 * The host's drawing suites, for effects with a custom user interface. The tables are opaque here:
 * an effect only passes the pointers on.
 */
#ifndef DRAWBOT_SUITE_H
#define DRAWBOT_SUITE_H

#ifdef __cplusplus
extern "C" {
#endif

typedef struct DRAWBOT_DrawbotSuite1 DRAWBOT_DrawbotSuite1;   /* "DRAWBOT Draw Suite", 1 */
typedef struct DRAWBOT_SupplierSuite1 DRAWBOT_SupplierSuite1; /* "DRAWBOT Supplier Suite", 1 */
typedef struct DRAWBOT_SurfaceSuite2 DRAWBOT_SurfaceSuite2;   /* "DRAWBOT Surface Suite", 2 */
typedef struct DRAWBOT_PathSuite1 DRAWBOT_PathSuite1;         /* "DRAWBOT Path Suite", 1 */

typedef struct DRAWBOT_Suites {
    DRAWBOT_DrawbotSuite1* drawbot_suiteP;
    DRAWBOT_SupplierSuite1* supplier_suiteP;
    DRAWBOT_SurfaceSuite2* surface_suiteP;
    DRAWBOT_PathSuite1* path_suiteP;
} DRAWBOT_Suites;

#ifdef __cplusplus
}
#endif

#endif
