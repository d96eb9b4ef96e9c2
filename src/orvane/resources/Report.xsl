<?xml version="1.0" encoding="UTF-8"?>
<!-- The look of a report. An empty REPORT gives the frame with a mark for the rows; RECORDS give rows. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="html" encoding="UTF-8" indent="no"/>

  <xsl:template match="/REPORT">
    <html>
      <head>
        <meta charset="UTF-8"/>
        <meta name="viewport" content="width=device-width, initial-scale=1"/>
        <title><xsl:value-of select="@TITLE"/></title>
        <style>
          :root { color-scheme: light dark; --line: #d5d9e0; --soft: #f4f6f9; --ink: #1d2430; --faint: #68717f; --paper: #fff; }
          @media (prefers-color-scheme: dark) { :root { --line: #363d49; --soft: #232933; --ink: #e4e8ee; --faint: #98a2b1; --paper: #181c23; } }
          body { font: 14px/1.45 system-ui, sans-serif; color: var(--ink); background: var(--paper); margin: 2rem auto; max-width: 78rem; padding: 0 1rem; }
          h1 { font-size: 1.5rem; margin: 0 0 .2rem; } .when { color: var(--faint); margin: 0 0 1.2rem; }
          .wide { overflow-x: auto; } table { border-collapse: collapse; width: 100%; }
          th { text-align: left; position: sticky; top: 0; background: var(--soft); } th, td { padding: .3rem .6rem; border-bottom: 1px solid var(--line); vertical-align: top; }
          td { font-variant-numeric: tabular-nums; } tr:hover td { background: var(--soft); }
          td.Dataname { font-family: ui-monospace, monospace; white-space: nowrap; } td.File { font-family: ui-monospace, monospace; color: var(--faint); white-space: nowrap; }
        </style>
      </head>
      <body>
        <h1><xsl:value-of select="@TITLE"/></h1>
        <p class="when"><xsl:value-of select="@TIME"/></p>
        <div class="wide">
          <table>
            <thead><tr><xsl:for-each select="COLUMN"><th><xsl:value-of select="@CAPTION"/></th></xsl:for-each></tr></thead>
            <tbody><xsl:comment>rows</xsl:comment></tbody>
          </table>
        </div>
      </body>
    </html>
  </xsl:template>

  <xsl:template match="/RECORDS"><xsl:apply-templates select="RECORD"/></xsl:template>
  <xsl:template match="RECORD">
    <tr><xsl:for-each select="*"><td class="{local-name()}"><xsl:apply-templates select="." mode="value"/></td></xsl:for-each></tr>
  </xsl:template>
  <xsl:template match="*[@RAW='no']" mode="value"><xsl:value-of select="." disable-output-escaping="yes"/></xsl:template>
  <xsl:template match="*" mode="value"><xsl:value-of select="."/></xsl:template>
</xsl:stylesheet>
