import vue from "@vitejs/plugin-vue";
import { defineConfig } from "vitest/config";

// Everything the page needs is built into dist: it loads nothing from elsewhere, and no script stands in
// the page itself.
export default defineConfig({
  plugins: [vue()],
  base: "/",
  build: { outDir: "dist", emptyOutDir: true, assetsInlineLimit: 0, modulePreload: { polyfill: false }, chunkSizeWarningLimit: 1500 },
  test: { include: ["tests/**/*.test.ts"], environment: "jsdom" },
});
